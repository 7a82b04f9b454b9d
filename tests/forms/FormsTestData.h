#pragma once

#include "db/ConnectionPool.h"
#include "support/TestProgramFolder.h"

#include <QAbstractButton>
#include <QString>
#include <QTest>

// Every test folder names its database "sqlite:db" relative to itself, so pooled connections of an
// earlier folder must not be handed out again: the pool is emptied around each test's folder.
struct PoolReset
{
    PoolReset() { qelprn::ConnectionPool::instance().clear(); }
    ~PoolReset() { qelprn::ConnectionPool::instance().clear(); }
    PoolReset(const PoolReset&) = delete;
    PoolReset& operator=(const PoolReset&) = delete;
};

// A real click on a radio button or check box: on its indicator, which a click in the middle of a
// stretched button misses.
inline void clickButton(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

// The small clinic the widget tests work on: own site 1/1 with a franchise site and a site of
// another region, the corporation and two clinics, an active and an ended practitioner, three
// facilities (one a hospital, one whose name holds an apostrophe) and three patients.
inline void seedClinic(qelprn::test::TestProgramFolder& folder, bool withStaff = true)
{
    using namespace Qt::StringLiterals;
    folder.exec(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cAreaName, cKyotenName, iUsedFlg) VALUES "
                u"(1, 0, '東京', '本部', 1), (1, 1, '東京', '杉並本店', 1), (1, 2, '東京', '練馬ＦＣ', 2), "
                u"(2, 1, '東京', '三鷹支店', 1)"_s);
    folder.exec(
        u"INSERT INTO CORP (nIDNo, iKyotenCd, iKyotenEb, iType, cShamei1) VALUES "
        u"(11, 1, 1, 0, '株式会社ほほえみ'), (12, 1, 1, 1, 'ほほえみ治療院'), (13, 1, 1, 1, 'ほほえみ鍼灸院')"_s);
    if (withStaff)
        folder.exec(
            u"INSERT INTO STAFF (nIDNo, iKyotenCd, iKyotenEb, cName, cNameKana, iChusiFlg) VALUES "
            u"(1, 1, 1, '山田　太郎', 'ヤマダ　タロウ', 0), (2, 1, 1, '佐藤　花子', 'サトウ　ハナコ', 1), "
            u"(3, 1, 1, '高橋　誠', 'タカハシ　マコト', 0)"_s);
    folder.exec(
        u"INSERT INTO SISETSU (nIDNo, iKyotenCd, iKyotenEb, iKikanShubetsu, cShamei1, cShameiKana1, nLat, "
        u"nLon) VALUES (100, 1, 1, 1, 'ひまわり荘', 'ヒマワリソウ', 35.7, 139.6), "
        u"(101, 1, 1, 1, 'O''Neil ハウス', 'オニールハウス', 35.7, 139.6), "
        u"(102, 1, 1, 2, '中央病院', 'チュウオウビョウイン', 35.7, 139.6)"_s);
    folder.exec(
        u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cName, cNameKana, cNameRyaku, cTelNo, nTantou, "
        u"iSejutsuKubun, tExpireDay) VALUES "
        u"(5, 1, 1, '鈴木　一郎', 'スズキ　イチロウ', '鈴木', '03-1234-0005', 1, 1, NULL), "
        u"(6, 1, 1, '田中　次郎', 'タナカ　ジロウ', '田中', '03-1234-0006', 3, 2, '2020/01/31'), "
        u"(7, 1, 1, '伊藤　三郎', 'イトウ　サブロウ', '伊藤', '03-1234-0007', 3, 2, '2099/12/31')"_s);
    folder.writeSettingsFile(u"DATA/施設種類List.txt"_s, u"特別養護老人ホーム\nグループホーム\n"_s);
}
