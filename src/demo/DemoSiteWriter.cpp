#include "demo/DemoSiteWriter.h"

#include "demo/DemoFees.h"
#include "demo/DemoNames.h"
#include "demo/DemoText.h"

#include <QVariant>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QStringList kKinds = {u"特別養護老人ホーム"_s, u"介護老人保健施設"_s,           u"有料老人ホーム"_s,
                            u"グループホーム"_s,     u"サービス付き高齢者向け住宅"_s, u"ケアハウス"_s};

} // namespace

// What the generator decided for one patient; the month writer derives every amount from it.
struct DemoPatient
{
    qint64 id = 0;
    int burdenCode = 0; // the code the queries use: iFutanritsu, or iKaigoLevel when that is 0
    bool massage = true;
    int massageParts = 1;
    bool henke = false, onan = false, denki = false;
    bool hari = false, kyu = false, hariDenki = false;
    int distance = 1;
    bool apportioned = false;
    int apportionedWith = 1;
    bool selfPayOnly = false;
    bool selfPayExtra = false;
    bool twoVisitsOneDay = false;
    bool ended = false;
    qint64 staff = 0;
};

DemoSiteWriter::DemoSiteWriter(QSqlDatabase& db, DemoRandom& rng, QDate month)
    : m_db(db), m_rng(rng), m_month(month),
      m_jisseki(db, u"JISSEKI"_s,
                {u"iKyotenCd"_s, u"iKyotenEb"_s, u"nRiyoushaIDNo"_s, u"nStaffIDNo"_s, u"tServicyDayStart"_s,
                 u"tServicyDayEnd"_s, u"iSejutsuKubun"_s, u"iAnbunUmu"_s, u"nGokeiKin"_s, u"nGokeiKinAnbun"_s,
                 u"nFutankin"_s, u"nFutankinAnbun"_s, u"nOuryouKin"_s, u"nOuryouKinAnbun"_s,
                 u"nKanjaSeikyu"_s, u"nJippiSejutu"_s, u"nOuryouKyori"_s, u"cPcName"_s, u"tUpDateTime"_s}),
      m_monthRows(db, u"月間実績"_s,
                  {u"患者IDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"実績年"_s, u"実績月"_s, u"施術回数"_s,
                   u"総合計"_s, u"自己負担額"_s, u"自己負担額2"_s, u"実費料金"_s, u"患者請求額"_s,
                   u"往療料"_s, u"cPcName"_s, u"tUpDateTime"_s})
{}

bool DemoSiteWriter::write(const DemoSite& site, bool firstOfCode, const std::function<void()>& patientDone)
{
    m_site = site;
    m_base4 = qint64(site.code * 100 + site.branch) * 10000;
    m_now = demoStamp(m_month.addDays(-3), 18 * 60);
    m_activeStaff.clear();
    m_homes.clear();
    m_hospitals.clear();
    m_doctors.clear();
    m_caremanes.clear();
    // Each part needs the rows of the parts before it (staff, homes, doctors).
    writeSiteRows(firstOfCode);
    if (m_error.isEmpty())
        writeCorporation();
    if (m_error.isEmpty())
        writeStaff();
    if (m_error.isEmpty())
        writeFacilities();
    if (m_error.isEmpty())
        writeContacts();
    return m_error.isEmpty() && writePatients(patientDone);
}

void DemoSiteWriter::writeSiteRows(bool firstOfCode)
{
    const int c = m_site.code;
    const int b = m_site.branch;
    const QString& now = m_now;
    // Sites: the head office row (branch 0) is never listed by the programs, but real databases have it.
    DemoInserter kyoten(m_db, u"KYOTEN"_s,
                        {u"iKyotenCd"_s, u"iKyotenEb"_s, u"cAreaName"_s, u"cKyotenName"_s, u"iUsedFlg"_s,
                         u"cPcName"_s, u"tUpDateTime"_s});
    if (firstOfCode)
        kyoten.add({c, 0, u"本部"_s, u"ほほえみ在宅ケア　本部"_s, 1, demoPcName(), now});
    kyoten.add({c, b, m_site.name, m_site.name, 1, demoPcName(), now});
    check(kyoten);

    // Insurance kinds: once per database, because the co-payment list joins them on iType alone.
    if (firstOfCode) {
        DemoInserter hoken(m_db, u"HOKEN"_s,
                           {u"iType"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"cName"_s, u"cRyaku"_s, u"cType"_s,
                            u"cPcName"_s, u"tUpDateTime"_s});
        const QList<std::pair<QString, QString>> kinds = {{u"国民健康保険"_s, u"国保"_s},
                                                          {u"社会保険"_s, u"社保"_s},
                                                          {u"後期高齢者医療"_s, u"後期"_s},
                                                          {u"退職者医療"_s, u"退職"_s},
                                                          {u"生活保護"_s, u"生保"_s}};
        for (int i = 0; i < kinds.size(); ++i)
            hoken.add(
                {i + 1, c, b, kinds[i].first, kinds[i].second, QString::number(i + 1), demoPcName(), now});
        check(hoken);
        DemoInserter hokenja(m_db, u"HOKENJA"_s,
                             {u"cIDno"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iHoken"_s, u"cName"_s,
                              u"cYubinNo"_s, u"cAddress1"_s, u"cTelNo"_s, u"cPcName"_s, u"tUpDateTime"_s});
        hokenja.add({u"39131015"_s, c, b, 3, u"東京都後期高齢者医療広域連合"_s, u"102-0072"_s,
                     u"東京都千代田区飯田橋3-5-1"_s, u"03-3222-4496"_s, demoPcName(), now});
        hokenja.add({u"131151"_s, c, b, 1, u"杉並区"_s, u"166-8570"_s, u"東京都杉並区阿佐谷南1-15-1"_s,
                     u"03-3312-2111"_s, demoPcName(), now});
        hokenja.add({u"06139999"_s, c, b, 2, u"全国健康保険協会東京支部"_s, u"164-8540"_s,
                     u"東京都中野区中野4-10-2"_s, u"03-6853-6111"_s, demoPcName(), now});
        check(hokenja);
    }
}

void DemoSiteWriter::writeCorporation()
{
    const int c = m_site.code;
    const int b = m_site.branch;
    const qint64 base4 = m_base4;
    const QString& now = m_now;
    // The corporation (iType 0) and its clinics, with the bank account the co-payment list prints.
    DemoInserter corp(m_db, u"CORP"_s,
                      {u"nIDNo"_s,        u"iKyotenCd"_s,    u"iKyotenEb"_s,   u"iType"_s,
                       u"cShamei1"_s,     u"cShameiKana1"_s, u"cDaihyo"_s,     u"cYubinNo"_s,
                       u"cAddress1"_s,    u"cAddress2"_s,    u"cTelNo"_s,      u"cFaxNo"_s,
                       u"iKinSyubetsu"_s, u"cKinyuName"_s,   u"iKinSiten"_s,   u"cKinyuSiten"_s,
                       u"iKozaType"_s,    u"cKozaBangou"_s,  u"cKozaMeigi1"_s, u"cKozaKana"_s,
                       u"cPcName"_s,      u"tUpDateTime"_s});
    {
        const DemoAddress a = DemoNames::address(m_rng);
        const QString holder = u"株式会社ほほえみ在宅ケア"_s;
        corp.add({base4 + 1,
                  c,
                  b,
                  0,
                  holder,
                  u"カブシキガイシャホホエミザイタクケア"_s,
                  u"代表取締役　森　健一"_s,
                  a.yubinNo,
                  a.address1 + a.address2,
                  u"ほほえみビル2階"_s,
                  a.telNo,
                  a.faxNo,
                  1,
                  u"みずほ"_s,
                  2,
                  u"荻窪"_s,
                  1,
                  QStringLiteral("%1").arg(1000000 + m_rng.between(0, 8999999)),
                  holder,
                  u"カ）ホホエミザイタクケア"_s,
                  demoPcName(),
                  now});
        const QList<std::pair<QString, QString>> clinics = {
            {u"ほほえみ鍼灸マッサージ院　"_s + m_site.name, u"ホホエミシンキュウマッサージイン"_s},
            {u"ほほえみ訪問治療院　"_s + m_site.name, u"ホホエミホウモンチリョウイン"_s}};
        const QList<std::pair<int, QString>> banks = {{2, u"西武"_s}, {3, u"東京みどり"_s}};
        const QList<std::pair<int, QString>> branches = {{5, u"南口"_s}, {3, u"中央"_s}};
        for (int i = 0; i < clinics.size(); ++i) {
            const DemoAddress ca = DemoNames::address(m_rng);
            corp.add({base4 + 2 + i,
                      c,
                      b,
                      1,
                      clinics[i].first,
                      clinics[i].second,
                      u"院長　"_s + DemoNames::person(m_rng, false).kanji,
                      ca.yubinNo,
                      ca.address1 + ca.address2,
                      QVariant(),
                      ca.telNo,
                      ca.faxNo,
                      banks[i].first,
                      banks[i].second,
                      branches[i].first,
                      branches[i].second,
                      1 + i,
                      QStringLiteral("%1").arg(1000000 + m_rng.between(0, 8999999)),
                      clinics[i].first,
                      clinics[i].second,
                      demoPcName(),
                      now});
        }
    }
    check(corp);
}

void DemoSiteWriter::writeStaff()
{
    const int c = m_site.code;
    const int b = m_site.branch;
    const qint64 base4 = m_base4;
    const QString& now = m_now;
    // Practitioners; every sixth has left (iChusiFlg 1) and gets no new patients.
    DemoInserter staff(m_db, u"STAFF"_s,
                       {u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"cName"_s, u"cNameRyaku"_s,
                        u"cNameKana"_s, u"iSex"_s, u"iSikaku"_s, u"cTelNo"_s, u"iChusiFlg"_s, u"cPcName"_s,
                        u"tUpDateTime"_s});
    const int staffCount = qBound(3, m_site.patients / 25, 400);
    for (int i = 1; i <= staffCount; ++i) {
        const bool female = m_rng.percent(40);
        const DemoName n = DemoNames::person(m_rng, female);
        const bool left = i % 6 == 0;
        const qint64 id = base4 + i;
        staff.add({id, c, b, n.kanji, n.kanji.section(u'　', 0, 0), n.kana, female ? 2 : 1,
                   m_rng.between(1, 3), DemoNames::address(m_rng).telNo, left ? 1 : 0, demoPcName(), now});
        if (!left)
            m_activeStaff.append(id);
    }
    check(staff);
}

void DemoSiteWriter::writeFacilities()
{
    const int c = m_site.code;
    const int b = m_site.branch;
    const qint64 base4 = m_base4;
    const QString& now = m_now;
    // Facilities: billing parents (corporate offices without residents) with one to three m_homes,
    // and m_homes that bill themselves (no parent). Hospitals (iKikanShubetsu 2) hold the m_doctors.
    DemoInserter sisetsu(m_db, u"SISETSU"_s,
                         {u"nIDNo"_s,         u"iKyotenCd"_s,     u"iKyotenEb"_s, u"iKikanShubetsu"_s,
                          u"cSisetsuType"_s,  u"nOyaSisetsuCd"_s, u"cShamei1"_s,  u"cShameiKana1"_s,
                          u"cShamei1Ryaku"_s, u"cDaihyo"_s,       u"cYubinNo"_s,  u"cAddress1"_s,
                          u"cAddress2"_s,     u"cAddressKana"_s,  u"cTelNo"_s,    u"cFaxNo"_s,
                          u"iType"_s,         u"nLat"_s,          u"nLon"_s,      u"nColorCode"_s,
                          u"iColorIndex"_s,   u"iPaymentType"_s,  u"cPcName"_s,   u"tUpDateTime"_s});
    int serial = 0;
    // At most 4,900 homes: with a parent for each, the four-digit facility serial never overflows.
    const int wantedHomes = qBound(3, (m_site.patients + 11) / 12, 4900);
    auto addFacility = [&](const DemoName& name, const QString& kind, qint64 parent, int kikan) {
        const DemoAddress a = DemoNames::address(m_rng);
        const qint64 id = base4 + ++serial;
        sisetsu.add({id,
                     c,
                     b,
                     kikan,
                     kind,
                     parent > 0 ? QVariant(parent) : QVariant(),
                     name.kanji,
                     name.kana,
                     name.kanji.section(u'　', -1),
                     u"施設長　"_s + DemoNames::person(m_rng, m_rng.percent(50)).kanji,
                     a.yubinNo,
                     a.address1,
                     a.address2,
                     a.kana,
                     a.telNo,
                     a.faxNo,
                     0,
                     35.6 + m_rng.between(0, 2000) / 10000.0,
                     139.5 + m_rng.between(0, 3000) / 10000.0,
                     0,
                     0,
                     m_rng.percent(70) ? 0 : 1,
                     demoPcName(),
                     now});
        return Home{id, a.address1, a.address2, a.yubinNo};
    };
    while (m_homes.size() < wantedHomes) {
        const QString kind = m_rng.pick(kKinds);
        // The first home bills itself and the second belongs to a group, so every site shows both.
        const bool standalone = m_homes.isEmpty() || (m_homes.size() > 1 && m_rng.percent(30));
        if (standalone) {
            m_homes.append(addFacility(DemoNames::facility(m_rng, kind), kind, 0, 1));
            continue;
        }
        const DemoName word = DemoNames::houseWord(m_rng);
        const DemoName parentName{u"社会福祉法人　"_s + word.kanji + u"会　法人本部"_s,
                                  u"シャカイフクシホウジン "_s + word.kana + u"カイ"_s};
        const qint64 parent = addFacility(parentName, kind, 0, 1).id;
        const int children = m_rng.between(1, 3);
        for (int i = 0; i < children && m_homes.size() < wantedHomes; ++i) {
            DemoName child = DemoNames::facility(m_rng, kind);
            child.kanji += QStringLiteral("　%1号館").arg(i + 1);
            m_homes.append(addFacility(child, kind, parent, 1));
        }
    }
    for (int i = 0; i < 3; ++i) {
        const QString name = DemoNames::doctorInstitution(m_rng);
        m_hospitals.append(addFacility({name, QString()}, QString(), 0, 2).id);
    }
    check(sisetsu);
}

void DemoSiteWriter::writeContacts()
{
    const int c = m_site.code;
    const int b = m_site.branch;
    const qint64 base4 = m_base4;
    const QString& now = m_now;
    // Consenting m_doctors, care managers, referrers and counselling offices.
    DemoInserter doctor(m_db, u"DOCTOR"_s,
                        {u"cIDNo"_s, u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iSisetsuCode"_s,
                         u"cName"_s, u"cNameKana"_s, u"cKikan"_s, u"cKamoku"_s, u"cPcName"_s,
                         u"tUpdateTime"_s});
    for (int i = 0; i < 4; ++i) {
        const DemoName n = DemoNames::person(m_rng, m_rng.percent(30));
        const qint64 id = base4 + i + 1;
        const QString kikan = DemoNames::doctorInstitution(m_rng);
        doctor.add({QString::number(id), id, c, b, m_hospitals.at(i % m_hospitals.size()), n.kanji, n.kana,
                    kikan, u"内科"_s, demoPcName(), now});
        m_doctors.append({id, n.kanji, kikan});
    }
    check(doctor);
    DemoInserter caremane(m_db, u"CAREMANE"_s,
                          {u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iSisetsuCode"_s, u"cName"_s,
                           u"cNameKana"_s, u"cTelNo"_s, u"cPcName"_s, u"tUpdateTime"_s});
    for (int i = 0; i < 3; ++i) {
        const DemoName n = DemoNames::person(m_rng, true);
        m_caremanes.append(base4 + i + 1);
        caremane.add({base4 + i + 1, c, b, m_homes.at(i % m_homes.size()).id, n.kanji, n.kana,
                      DemoNames::address(m_rng).telNo, demoPcName(), now});
    }
    check(caremane);
    DemoInserter syoukai(m_db, u"SYOUKAI"_s,
                         {u"nIDNo"_s, u"cIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iSisetsuCode"_s,
                          u"cName"_s, u"cTelNo"_s, u"cPcName"_s, u"tUpDateTime"_s});
    for (int i = 0; i < 2; ++i)
        syoukai.add({base4 + i + 1, QString::number(base4 + i + 1), c, b, m_homes.at(i % m_homes.size()).id,
                     DemoNames::person(m_rng, true).kanji, DemoNames::address(m_rng).telNo, demoPcName(),
                     now});
    check(syoukai);
    DemoInserter soudan(m_db, u"SOUDAN"_s,
                        {u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iSisetsuCode"_s, u"cName"_s,
                         u"cKikan"_s, u"cPcName"_s, u"tUpdateTime"_s});
    DemoInserter soudanTantou(m_db, u"SOUDAN_TANTOU"_s,
                              {u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iStaffKyotenCd"_s,
                               u"iStaffKyotenEb"_s, u"nStaffIDNo"_s, u"cPcName"_s, u"tUpDateTime"_s});
    for (int i = 0; i < 2; ++i) {
        soudan.add({base4 + i + 1, c, b, m_homes.at(i % m_homes.size()).id,
                    DemoNames::person(m_rng, true).kanji, u"地域包括支援センター"_s + m_site.name,
                    demoPcName(), now});
        soudanTantou.add({base4 + i + 1, c, b, c, b,
                          m_activeStaff.isEmpty() ? base4 + 1 : m_activeStaff.first(), demoPcName(), now});
    }
    check(soudan);
    check(soudanTantou);
    DemoInserter shinseisyo(m_db, u"SHINSEISYO"_s,
                            {u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"cFileName"_s, u"cDispName"_s,
                             u"iSejutsuKubun"_s, u"iHokenType"_s, u"iDelFlg"_s, u"cPcName"_s,
                             u"tUpDateTime"_s});
    shinseisyo.add({base4 + 1, c, b, u"申請書_マッサージ.wfd"_s, u"療養費支給申請書（マッサージ）"_s, 1, 0, 0,
                    demoPcName(), now});
    shinseisyo.add({base4 + 2, c, b, u"申請書_鍼灸.wfd"_s, u"療養費支給申請書（はり・きゅう）"_s, 2, 0, 0,
                    demoPcName(), now});
    check(shinseisyo);
}

bool DemoSiteWriter::writePatients(const std::function<void()>& patientDone)
{
    const int c = m_site.code;
    const int b = m_site.branch;
    const qint64 base4 = m_base4;
    const QString& now = m_now;
    // Patients.
    const QStringList riyoushaColumns = {
        u"nIDNo"_s,          u"iKyotenCd"_s,    u"iKyotenEb"_s,     u"cName"_s,          u"cNameRyaku"_s,
        u"cNameKana"_s,      u"iSex"_s,         u"tBirthday"_s,     u"cHokenNo"_s,       u"iHoken"_s,
        u"iSyogai"_s,        u"iKaigoLevel"_s,  u"iFutanritsu"_s,   u"cYubinNo"_s,       u"cAdress1"_s,
        u"cAdress2"_s,       u"cTelNo"_s,       u"nTantou"_s,       u"nTantou2"_s,       u"cByoumei"_s,
        u"iSejutuBui1"_s,    u"iSejutuBui2"_s,  u"iSejutuBui3"_s,   u"iSejutuBui4"_s,    u"iSejutuBui5"_s,
        u"iHenke"_s,         u"iOnan"_s,        u"iDenki"_s,        u"iSejutuBui11"_s,   u"iSejutuBui12"_s,
        u"iSejutuBui13"_s,   u"iSejutuBui14"_s, u"iSejutuBui15"_s,  u"iOnan1"_s,         u"iDenki1"_s,
        u"iSejutsuKubun"_s,  u"iHKHariUmu"_s,   u"iHKKyuUmu"_s,     u"iHKDekiUmu"_s,     u"cDouiIsiName1"_s,
        u"cDouiIsiKikan1"_s, u"tDouiDay1"_s,    u"cDouiIsiName2"_s, u"cDouiIsiKikan2"_s, u"tDouiDay2"_s,
        u"nRoomNo"_s,        u"tExpireDay"_s,   u"nLenFix"_s,       u"tStartDay"_s,      u"cPcName"_s,
        u"tUpDateTime"_s};
    DemoInserter riyousha(m_db, u"RIYOUSHA"_s, riyoushaColumns);
    DemoInserter riyoushaSub(m_db, u"RIYOUSHA_SUB"_s,
                             {u"nIDNo"_s, u"iKyotenCd"_s, u"iKyotenEb"_s, u"iAddressSet"_s,
                              u"iAddressSisetsuCd"_s, u"iAddressSisetsuCd2"_s, u"iAddressSisetsuCd3"_s,
                              u"iCareSisetsuCd"_s, u"iCareCd"_s, u"iSyoukaiSisetsuCd"_s, u"iIsiCd"_s,
                              u"iRiyouJoseiUmu"_s, u"cPcName"_s, u"tUpDateTime"_s});
    const qint64 patientBase = qint64(c * 100 + b) * (m_site.patients > 9999 ? 100000 : 10000);
    for (int i = 1; i <= m_site.patients; ++i) {
        DemoPatient p;
        p.id = patientBase + i;
        const bool female = m_rng.percent(70);
        const DemoName name = DemoNames::person(m_rng, female);
        const Home& home = m_homes.at(m_rng.between(0, int(m_homes.size()) - 1));
        const bool atHome = m_rng.percent(3);
        // Where the patient is visited: address set 0 uses iAddressSisetsuCd, 1 the second, 2 the third.
        const int addressSet = m_rng.percent(80) ? 0 : (m_rng.percent(60) ? 1 : 2);
        QVariant cd1, cd2, cd3;
        const qint64 facility = atHome ? 0 : home.id;
        const qint64 other = m_homes.at(m_rng.between(0, int(m_homes.size()) - 1)).id;
        if (addressSet == 0) {
            cd1 = facility;
        } else if (addressSet == 1) {
            cd1 = other;
            cd2 = facility;
        } else {
            cd1 = other;
            cd3 = facility;
        }
        const qint64 careFacility = atHome ? 0 : (m_rng.percent(5) ? other : facility);
        const int hoken =
            m_rng.percent(60)
                ? 3
                : (m_rng.percent(40) ? 1 : (m_rng.percent(60) ? 2 : (m_rng.percent(50) ? 4 : 5)));
        int futanritsu = 0;
        int kaigoLevel = m_rng.between(1, 7);
        if (hoken == 5) {
            futanritsu = 1; // public assistance: no co-payment
        } else {
            const int r = m_rng.between(0, 99);
            futanritsu = r < 60 ? 2 : (r < 72 ? 3 : (r < 92 ? 4 : 0));
            if (futanritsu == 0)
                kaigoLevel = m_rng.between(2, 4); // stands in for the missing burden code
        }
        p.burdenCode = futanritsu > 0 ? futanritsu : kaigoLevel;
        const bool subsidy = hoken == 5 || m_rng.percent(8);
        const int syogai = hoken == 5 ? 4 : m_rng.between(1, 3);
        p.massage = m_rng.percent(70);
        p.massageParts = m_rng.between(1, 5);
        p.henke = p.massage && m_rng.percent(30);
        p.onan = p.massage && m_rng.percent(40);
        p.denki = p.massage && m_rng.percent(20);
        p.hari = !p.massage;
        p.kyu = !p.massage && m_rng.percent(60);
        p.hariDenki = !p.massage && m_rng.percent(30);
        p.distance = m_rng.between(1, 20);
        p.apportioned = !atHome && m_rng.percent(25);
        p.apportionedWith = m_rng.between(2, 4);
        p.selfPayOnly = m_rng.percent(2);
        p.selfPayExtra = !p.selfPayOnly && m_rng.percent(10);
        p.twoVisitsOneDay = m_rng.percent(5);
        p.ended = m_rng.percent(4);
        p.staff = m_activeStaff.isEmpty() ? base4 + 1 : m_rng.pick(m_activeStaff);

        QVariantList bui1 = {0, 0, 0, 0, 0};
        for (int k = 0; k < p.massageParts; ++k)
            bui1[k] = 1;
        const Doctor& doc = m_rng.pick(m_doctors);
        const QDate consent1 = m_month.addMonths(-m_rng.between(1, 5)).addDays(m_rng.between(0, 27));
        const bool secondConsent = m_rng.percent(25);
        QVariantList bui2 = {QVariant(), QVariant(), QVariant(), QVariant(), QVariant()};
        QVariant onan1, denki1;
        if (secondConsent) {
            for (int k = 0; k < 5; ++k)
                bui2[k] = k < p.massageParts ? 1 : 0;
            onan1 = p.onan ? 1 : 0;
            denki1 = p.denki ? 1 : 0;
        }
        const int room = m_rng.between(1, 3) * 100 + m_rng.between(1, 20);
        const QDate birthday(m_rng.between(1925, 1950), m_rng.between(1, 12), m_rng.between(1, 28));
        const QVariant expire =
            p.ended ? QVariant(demoDate(m_month.addDays(-m_rng.between(1, 10)))) : QVariant();
        riyousha.add(
            {p.id,
             c,
             b,
             name.kanji,
             name.kanji.section(u'　', 0, 0),
             name.kana,
             female ? 2 : 1,
             demoDate(birthday),
             QStringLiteral("%1").arg(10000000 + m_rng.between(0, 89999999)),
             hoken,
             syogai,
             kaigoLevel,
             futanritsu,
             atHome ? DemoNames::address(m_rng).yubinNo : home.yubin,
             atHome ? DemoNames::address(m_rng).address1 : home.address1,
             atHome ? QString() : home.address2 + QStringLiteral("　%1号室").arg(room),
             DemoNames::address(m_rng).telNo,
             p.staff,
             m_rng.percent(30) && !m_activeStaff.isEmpty() ? QVariant(m_rng.pick(m_activeStaff)) : QVariant(),
             DemoNames::disease(m_rng),
             bui1[0],
             bui1[1],
             bui1[2],
             bui1[3],
             bui1[4],
             p.henke ? 1 : 0,
             p.onan ? 1 : 0,
             p.denki ? 1 : 0,
             bui2[0],
             bui2[1],
             bui2[2],
             bui2[3],
             bui2[4],
             onan1,
             denki1,
             p.massage ? 1 : 2,
             p.hari ? 1 : 0,
             p.kyu ? 1 : 0,
             p.hariDenki ? 1 : 0,
             doc.name,
             doc.kikan,
             demoDate(consent1),
             secondConsent ? QVariant(doc.name) : QVariant(),
             secondConsent ? QVariant(doc.kikan) : QVariant(),
             secondConsent ? QVariant(demoDate(consent1.addDays(m_rng.between(1, 20)))) : QVariant(),
             atHome ? 0 : room,
             expire,
             p.distance,
             demoDate(consent1.addDays(2)),
             demoPcName(),
             now});
        riyoushaSub.add({p.id, c, b, addressSet, cd1, cd2, cd3, careFacility, m_rng.pick(m_caremanes),
                         QVariant(), doc.id, subsidy ? 1 : 0, demoPcName(), now});
        check(riyousha);
        check(riyoushaSub);
        writeMonth(p, m_month.addMonths(-1));
        if (!p.ended)
            writeMonth(p, m_month);
        if (!m_error.isEmpty())
            return false;
        patientDone();
    }
    return m_error.isEmpty();
}

void DemoSiteWriter::writeMonth(const DemoPatient& p, QDate month)
{
    // Treatment days: 1 to 15, never on a Sunday, in date order.
    QList<QDate> days;
    for (QDate d = month; d.month() == month.month(); d = d.addDays(1)) {
        if (d.dayOfWeek() != Qt::Sunday)
            days.append(d);
    }
    const int r = m_rng.between(0, 99);
    const int wanted = r < 30 ? m_rng.between(1, 4) : (r < 70 ? m_rng.between(5, 8) : m_rng.between(9, 15));
    while (days.size() > wanted)
        days.removeAt(m_rng.between(0, int(days.size()) - 1));
    struct Visit
    {
        QDate day;
        int minutes;
    };
    QList<Visit> visits;
    for (const QDate& d : days)
        visits.append({d, 9 * 60 + 30 * m_rng.between(0, 14)});
    if (p.twoVisitsOneDay && !visits.isEmpty()) {
        const int k = m_rng.between(0, int(visits.size()) - 1);
        visits.insert(k + 1, {visits[k].day, visits[k].minutes + 120});
    }

    int treatment = 0;
    if (p.massage) {
        treatment = DemoFees::kMassagePerPart * p.massageParts + (p.henke ? DemoFees::kHenke : 0) +
                    (p.onan ? DemoFees::kOnan : 0) + (p.denki ? DemoFees::kDenki : 0);
    } else {
        treatment = (p.kyu ? DemoFees::kHari2 : DemoFees::kHari1) + (p.hariDenki ? DemoFees::kHariDenki : 0);
    }
    const int tenths = p.burdenCode - 1;
    qint64 total = 0, share = 0, jippi = 0, bill = 0, ouryou = 0;
    for (const Visit& v : visits) {
        const int tr = p.selfPayOnly ? 0 : treatment;
        const int ou = p.selfPayOnly ? 0 : DemoFees::houseCallFee(p.distance);
        const int gokei = tr + ou;
        // Visited together with others: the house-call fee is shared, rounded down to ten yen.
        const int ouAnbun = p.apportioned ? (ou / p.apportionedWith) / 10 * 10 : 0;
        const int gokeiAnbun = p.apportioned ? tr + ouAnbun : 0;
        const int dayTotal = p.apportioned ? gokeiAnbun : gokei;
        const int futan = gokei * tenths / 10;
        const int futanAnbun = p.apportioned ? gokeiAnbun * tenths / 10 : 0;
        const int dayShare = dayTotal * tenths / 10;
        int dayJippi = 0;
        if (p.selfPayOnly)
            dayJippi = DemoFees::kJippiSejutu + DemoFees::kJippiKoutsu;
        else if (p.selfPayExtra && m_rng.percent(50))
            dayJippi = m_rng.percent(50) ? DemoFees::kJippiSejutu : DemoFees::kJippiSejutu / 2;
        const int kanja = dayShare + dayJippi;
        m_jisseki.add({m_site.code, m_site.branch, p.id, p.staff, demoStamp(v.day, v.minutes),
                       demoStamp(v.day, v.minutes + 30), p.massage ? 1 : 2, p.apportioned ? 1 : 0, gokei,
                       gokeiAnbun, futan, futanAnbun, ou, ouAnbun, kanja, dayJippi, p.distance, demoPcName(),
                       demoStamp(v.day, 18 * 60)});
        total += dayTotal;
        share += dayShare;
        jippi += dayJippi;
        bill += kanja;
        ouryou += p.apportioned ? ouAnbun : ou;
    }
    check(m_jisseki);
    m_monthRows.add({p.id, m_site.code, m_site.branch, month.year(), month.month(), int(visits.size()), total,
                     share, share, jippi, bill, ouryou, demoPcName(),
                     demoStamp(month.addMonths(1), 10 * 60)});
    check(m_monthRows);
}

void DemoSiteWriter::fail(const QString& e)
{
    if (m_error.isEmpty())
        m_error = e;
}

} // namespace qelprn
