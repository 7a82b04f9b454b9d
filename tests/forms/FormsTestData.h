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
    const auto site = [&](int cd, int eb, const QString& name, int used) {
        folder.insert(u"KYOTEN"_s, {{u"iKyotenCd"_s, cd},
                                    {u"iKyotenEb"_s, eb},
                                    {u"cAreaName"_s, u"東京"_s},
                                    {u"cKyotenName"_s, name},
                                    {u"iUsedFlg"_s, used}});
    };
    site(1, 0, u"本部"_s, 1);
    site(1, 1, u"杉並本店"_s, 1);
    site(1, 2, u"練馬ＦＣ"_s, 2);
    site(2, 1, u"三鷹支店"_s, 1);
    const auto corp = [&](int id, int type, const QString& name) {
        folder.insert(u"CORP"_s, {{u"nIDNo"_s, id},
                                  {u"iKyotenCd"_s, 1},
                                  {u"iKyotenEb"_s, 1},
                                  {u"iType"_s, type},
                                  {u"cShamei1"_s, name}});
    };
    corp(11, 0, u"株式会社ほほえみ"_s);
    corp(12, 1, u"ほほえみ治療院"_s);
    corp(13, 1, u"ほほえみ鍼灸院"_s);
    if (withStaff) {
        const auto staff = [&](int id, const QString& name, const QString& kana, int ended) {
            folder.insert(u"STAFF"_s, {{u"nIDNo"_s, id},
                                       {u"iKyotenCd"_s, 1},
                                       {u"iKyotenEb"_s, 1},
                                       {u"cName"_s, name},
                                       {u"cNameKana"_s, kana},
                                       {u"iChusiFlg"_s, ended}});
        };
        staff(1, u"山田　太郎"_s, u"ヤマダ　タロウ"_s, 0);
        staff(2, u"佐藤　花子"_s, u"サトウ　ハナコ"_s, 1);
        staff(3, u"高橋　誠"_s, u"タカハシ　マコト"_s, 0);
    }
    const auto facility = [&](int id, int kikan, const QString& name, const QString& kana) {
        folder.insert(u"SISETSU"_s, {{u"nIDNo"_s, id},
                                     {u"iKyotenCd"_s, 1},
                                     {u"iKyotenEb"_s, 1},
                                     {u"iKikanShubetsu"_s, kikan},
                                     {u"cShamei1"_s, name},
                                     {u"cShameiKana1"_s, kana},
                                     {u"nLat"_s, 35.7},
                                     {u"nLon"_s, 139.6}});
    };
    facility(100, 1, u"ひまわり荘"_s, u"ヒマワリソウ"_s);
    facility(101, 1, u"O'Neil ハウス"_s, u"オニールハウス"_s);
    facility(102, 2, u"中央病院"_s, u"チュウオウビョウイン"_s);
    const auto patient = [&](int id, const QString& name, const QString& kana, int tantou, int kubun,
                             const QVariant& expire) {
        folder.insert(u"RIYOUSHA"_s, {{u"nIDNo"_s, id},
                                      {u"iKyotenCd"_s, 1},
                                      {u"iKyotenEb"_s, 1},
                                      {u"cName"_s, name},
                                      {u"cNameKana"_s, kana},
                                      {u"cNameRyaku"_s, name.left(2)},
                                      {u"cTelNo"_s, u"03-1234-%1"_s.arg(id, 4, 10, QLatin1Char('0'))},
                                      {u"nTantou"_s, tantou},
                                      {u"iSejutsuKubun"_s, kubun},
                                      {u"tExpireDay"_s, expire}});
    };
    patient(5, u"鈴木　一郎"_s, u"スズキ　イチロウ"_s, 1, 1, QVariant());
    patient(6, u"田中　次郎"_s, u"タナカ　ジロウ"_s, 3, 2, u"2020/01/31"_s);
    patient(7, u"伊藤　三郎"_s, u"イトウ　サブロウ"_s, 3, 2, u"2099/12/31"_s);
    folder.writeSettingsFile(u"DATA/施設種類List.txt"_s, u"特別養護老人ホーム\nグループホーム\n"_s);
}
