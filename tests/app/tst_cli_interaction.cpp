#include "app/CliInteraction.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_cli_interaction : public QObject
{
    Q_OBJECT

private slots:
    void messagesQuestionsAndEnd()
    {
        QString text;
        QTextStream err(&text);
        qelprn::CliInteraction no(false, &err);
        no.progress(u"phase"_s, 1, 2); // a captured stream is never a terminal
        QCOMPARE(no.messageBox(u"一行目\r\n二行目\r三行目"_s, u"警告！"_s, qelprn::MsgIcon::Critical),
                 qelprn::MsgResult::Ok);
        QCOMPARE(text, u"警告！: 一行目\n二行目\n三行目\n"_s);
        text.clear();
        QCOMPARE(no.messageBox(u"続けますか？"_s, u"施設請求書印刷"_s, qelprn::MsgIcon::Question,
                               qelprn::MsgButtons::YesNo),
                 qelprn::MsgResult::No);
        QVERIFY(text.startsWith(u"施設請求書印刷: 続けますか？\n"_s));
        QVERIFY(text.contains(u"--yes"_s));

        qelprn::CliInteraction yes(true, &err);
        QCOMPARE(yes.messageBox(u"q"_s, u"t"_s, qelprn::MsgIcon::Question, qelprn::MsgButtons::YesNo),
                 qelprn::MsgResult::Yes);
        text.clear();
        yes.openUrl(u"https://example.invalid/x"_s);
        QCOMPARE(text, u"https://example.invalid/x\n"_s);
        int code = 0;
        try {
            yes.endProgram(2);
        } catch (const qelprn::ProgramEnd& e) {
            code = e.exitCode;
        }
        QCOMPARE(code, 2);
    }
};

QTEST_GUILESS_MAIN(tst_cli_interaction)
#include "tst_cli_interaction.moc"
