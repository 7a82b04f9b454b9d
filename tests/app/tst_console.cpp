// The command-line program's interaction: messages on the error stream, questions answered by
// --yes or at a terminal, waits and links.
#include "app/CliInteraction.h"

#include <QtTest>
#include <utility>

using namespace Qt::StringLiterals;

class tst_console : public QObject
{
    Q_OBJECT

private slots:
    void messagesQuestionsWaitsAndLinks()
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

        // At a terminal the person is asked; anything but yes is no.
        for (const auto& [typed, answer] :
             {std::pair{u"y\n"_s, qelprn::MsgResult::Yes}, std::pair{u"はい\n"_s, qelprn::MsgResult::Yes},
              std::pair{u"\n"_s, qelprn::MsgResult::No}}) {
            QString input = typed;
            QTextStream in(&input);
            qelprn::CliInteraction asked(false, &err, &in);
            text.clear();
            QCOMPARE(asked.messageBox(u"続けますか？"_s, u"確認"_s, qelprn::MsgIcon::Question,
                                      qelprn::MsgButtons::YesNo),
                     answer);
            QCOMPARE(text, u"確認: 続けますか？\n  はい / いいえ (y/N): "_s);
        }
        // A wait is said once, however often it is asked about.
        text.clear();
        QVERIFY(no.keepWaiting(u"待っています"_s, 0) && no.keepWaiting(u"待っています"_s, 500));
        no.waitEnded();
        QCOMPARE(text.count(u"待っています"_s), 1);

        qelprn::CliInteraction yes(true, &err);
        QCOMPARE(yes.messageBox(u"q"_s, u"t"_s, qelprn::MsgIcon::Question, qelprn::MsgButtons::YesNo),
                 qelprn::MsgResult::Yes);
        text.clear();
        yes.openUrl(u"https://example.invalid/x"_s);
        QCOMPARE(text, u"https://example.invalid/x\n"_s);
    }
};

QTEST_GUILESS_MAIN(tst_console)
#include "tst_console.moc"
