// Figures for the CP932 conversion that every CSV field goes through.
#include "app/Cp932.h"

#include <QElapsedTimer>
#include <QStringList>
#include <cstdio>

using namespace Qt::StringLiterals;

int main()
{
    const QStringList fields = {u"髙橋 花子"_s, u"ﾀｶﾊｼ ﾊﾅｺ"_s,   u"東京都千代田区１－２－３"_s,
                                u"12345"_s,     u"2026/11/01"_s, u"訪問マッサージ①～⑤"_s};
    constexpr int rows = 200000;
    QByteArray out;
    out.reserve(rows * 120);
    QElapsedTimer timer;
    timer.start();
    for (int r = 0; r < rows; ++r) {
        for (const QString& f : fields) {
            qelprn::appendCp932(out, f);
            out.append(',');
        }
        out.append("\r\n");
    }
    const double encodeMs = double(timer.nsecsElapsed()) / 1e6;
    timer.restart();
    const QString back = qelprn::fromCp932(out);
    const double decodeMs = double(timer.nsecsElapsed()) / 1e6;
    std::printf("appendCp932: %d rows x %d fields, %.1f MB in %.1f ms (%.0f fields/ms)\n", rows,
                int(fields.size()), out.size() / 1e6, encodeMs, rows * fields.size() / encodeMs);
    std::printf("fromCp932: %.1f MB in %.1f ms (%lld characters)\n", out.size() / 1e6, decodeMs,
                static_cast<long long>(back.size()));
    return 0;
}
