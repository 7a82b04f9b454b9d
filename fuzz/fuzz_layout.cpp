// The engine's layout loader (the JSON .wfd forms).
#include "FuzzInput.h"
#include "engine/LayoutReader.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    qelprn::engine::Layout layout;
    qelprn::engine::EngineError error;
    qelprn::engine::parseLayout(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)),
                                u"fuzz.wfd"_s, layout, &error);
    return 0;
}
