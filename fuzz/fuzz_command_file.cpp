// The engine's command file "WfdCom.dat".
#include "FuzzInput.h"
#include "engine/CommandFile.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    qelprn::engine::EngineJob job;
    qelprn::engine::EngineError error;
    qelprn::engine::parseCommandFile(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)),
                                     qelprn::fuzz::programFolder() + u"/WfdCom.dat"_s, job, &error);
    return 0;
}
