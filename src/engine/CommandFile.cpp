#include "engine/CommandFile.h"

#include "app/Cp932.h"
#include "app/Paths.h"
#include "engine/CsvLine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

QString resolvePath(const QString& folder, const QString& written)
{
    const QString local = toLocalPath(written);
    return QFileInfo(local).isAbsolute() ? local : QDir(folder).filePath(local);
}

bool readNumber(const QStringList& f, int low, int high, int& value, QString& problem)
{
    bool ok = false;
    const int n = f.size() >= 2 ? f[1].toInt(&ok) : 0;
    if (f.size() != 2 || !ok || n < low || n > high) {
        problem = u"%1 には %2 から %3 までの数を 1 つ指定してください"_s.arg(f[0]).arg(low).arg(high);
        return false;
    }
    value = n;
    return true;
}

} // namespace

bool readCommandFile(const QString& path, EngineJob& job, EngineError* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = {path, 0, u"コマンドファイルを開けません（%1）"_s.arg(file.errorString())};
        return false;
    }
    return parseCommandFile(file.readAll(), path, job, error);
}

bool parseCommandFile(const QByteArray& bytes, const QString& path, EngineJob& job, EngineError* error)
{
    job = EngineJob{};
    job.commandFile = path;
    const QString folder = QFileInfo(path).absolutePath();
    const QStringList lines = fromCp932(bytes).split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        const int lineNo = i + 1;
        QString line = lines[i];
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.trimmed().isEmpty())
            continue;
        auto fail = [&](const QString& message) {
            *error = {path, lineNo, message};
            return false;
        };
        QStringList f;
        QString problem;
        if (!splitCsvLine(line, f, &problem))
            return fail(problem);
        const QString command = f[0].trimmed();
        auto is = [&](const char16_t* name) {
            return command.compare(QStringView(name), Qt::CaseInsensitive) == 0;
        };
        if (job.action != EngineJob::Action::None)
            return fail(u"動作（ShowWindow, PrintOut, PrintOutFromDialog）の後にコマンドがあります"_s);

        if (is(u"FileName")) {
            if (f.size() != 2 || f[1].isEmpty())
                return fail(u"FileName にはレイアウトファイルのパスを 1 つ指定してください"_s);
            job.layoutPath = resolvePath(folder, f[1]);
            job.layoutLine = lineNo;
        } else if (is(u"Title")) {
            if (f.size() != 2)
                return fail(u"Title には表題を 1 つ指定してください"_s);
            job.title = f[1];
        } else if (is(u"SetDataText")) {
            // "name","file" or "name","file",,,1 (the file has no title line)
            const bool noTitleForm = f.size() == 6 && f[3].isEmpty() && f[4].isEmpty() && f[5] == u"1"_s;
            if ((f.size() != 3 && !noTitleForm) || f[1].isEmpty() || f[2].isEmpty())
                return fail(u"SetDataText にはデータ名とデータファイル名を指定してください"_s);
            if (job.data.size() >= 5)
                return fail(u"SetDataText は 5 つまでです"_s);
            job.data.append({f[1], resolvePath(folder, f[2]), noTitleForm, lineNo});
        } else if (is(u"PrintOffsetX")) {
            if (!readNumber(f, -10000, 10000, job.offsetX, problem))
                return fail(problem);
        } else if (is(u"PrintOffsetY")) {
            if (!readNumber(f, -10000, 10000, job.offsetY, problem))
                return fail(problem);
        } else if (is(u"PrintZoom")) {
            if (!readNumber(f, 2, 400, job.zoom, problem) || (job.zoom != 2 && job.zoom < 10))
                return fail(
                    u"PrintZoom には 2（レイアウトのまま）か 10 から 400 までの百分率を指定してください"_s);
        } else if (is(u"SectionRepeatStart")) {
            if (!readNumber(f, 0, 9999, job.repeatStart, problem))
                return fail(problem);
        } else if (is(u"PrintPaper")) {
            const QString paper = f.size() == 2 ? f[1].toUpper() : QString();
            if (paper != u"A4"_s && paper != u"B5"_s && paper != u"A5"_s)
                return fail(u"PrintPaper には A4、B5、A5 のどれかを指定してください"_s);
            job.paper = paper;
        } else if (is(u"SetItemValue")) {
            if (f.size() != 3 || f[1].isEmpty())
                return fail(u"SetItemValue には項目名と値を指定してください"_s);
            job.items.append({f[1], f[2], lineNo});
        } else if (is(u"ShowWindow")) {
            if (f.size() != 2 || f[1] != u"2"_s)
                return fail(u"ShowWindow は ShowWindow,2 の形で指定してください"_s);
            job.action = EngineJob::Action::Preview;
        } else if (is(u"PrintOut") && f.size() == 1) {
            job.action = EngineJob::Action::PrintOut;
        } else if (is(u"PrintOutFromDialog") && f.size() == 1) {
            job.action = EngineJob::Action::PrintOutFromDialog;
        } else {
            return fail(u"不明なコマンドです: "_s + line);
        }
    }
    if (job.layoutPath.isEmpty()) {
        *error = {path, 0, u"FileName（レイアウトファイル）の指定がありません"_s};
        return false;
    }
    if (job.action == EngineJob::Action::None) {
        *error = {path, 0, u"動作（ShowWindow,2 / PrintOut / PrintOutFromDialog）の指定がありません"_s};
        return false;
    }
    return true;
}

} // namespace qelprn::engine
