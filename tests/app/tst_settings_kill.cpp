// "印刷設定.ini" is written after every run; a program killed at any moment of a write must leave
// the old file or the new one, whole. The test starts itself as a writer that rewrites the file in
// a loop, kills it at varying moments, and reads the file back each time.
#include "app/Cp932.h"
#include "app/clsOplIniFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QString kSection = u"施設請求書"_s;

// The writer: alternates two whole sets of the four keys, each key one write, for ever.
[[noreturn]] void writeForEver(const QString& path)
{
    for (int round = 0;; ++round) {
        qelprn::clsOplIniFile ini;
        if (ini.iInit(path) != 0)
            std::exit(3);
        const QString v = QString::number(round % 2);
        for (const QString& key : {u"並び順"_s, u"印字社名"_s, u"印字治療院名"_s, u"対象施設"_s})
            ini.iWriteProfileString(kSection, key, v + QString(200, u'x'));
    }
}

} // namespace

class tst_settings_kill : public QObject
{
    Q_OBJECT

private slots:
    void killedWriterLeavesAWholeFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"印刷設定.ini"_s);
        const QByteArray original =
            qelprn::toCp932(u"; 注釈\r\n[施設請求書]\r\n並び順=1\r\n[他]\r\nkey=値\r\n"_s);
        QFile seed(path);
        QVERIFY(seed.open(QIODevice::WriteOnly));
        seed.write(original);
        seed.close();

        for (int attempt = 0; attempt < 12; ++attempt) {
            QProcess writer;
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.insert(u"QELPRN_TEST_WRITER"_s, path);
            writer.setProcessEnvironment(env);
            writer.start(QCoreApplication::applicationFilePath(), {});
            QVERIFY(writer.waitForStarted());
            QThread::msleep(20 + 13 * attempt);
            writer.kill();
            writer.waitForFinished();

            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = qelprn::fromCp932(file.readAll());
            // Whatever the moment, every line the file ever had is whole and the rest is kept.
            QVERIFY2(text.startsWith(u"; 注釈\r\n[施設請求書]\r\n"_s), qPrintable(text));
            QVERIFY(text.endsWith(u"[他]\r\nkey=値\r\n"_s));
            const QStringList lines = text.split(u"\r\n"_s, Qt::SkipEmptyParts);
            for (const QString& line : lines) {
                if (line.contains(u'=') && !line.startsWith(u"key"_s))
                    QVERIFY2(line.endsWith(u"=1"_s) || line.endsWith(QString(200, u'x')), qPrintable(line));
            }
        }
    }
};

int main(int argc, char** argv)
{
    const QString writer = qEnvironmentVariable("QELPRN_TEST_WRITER");
    if (!writer.isEmpty()) {
        QCoreApplication app(argc, argv);
        writeForEver(writer);
    }
    QCoreApplication app(argc, argv);
    tst_settings_kill test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_settings_kill.moc"
