#include "demo/SuiteSchema.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// One statement per ";"-terminated block. Keys are primary keys so that a duplicate master row
// fails as it does on the server; result tables (月間実績, JISSEKI) only carry search indexes.
constexpr const char* kSchema = R"sql(
CREATE TABLE IF NOT EXISTS KYOTEN (
    iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    cAreaName TEXT, cKyotenName TEXT, iUsedFlg INTEGER,
    cYubinNo TEXT, cAddress1 TEXT, cTelNo TEXT, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS CORP (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    iType INTEGER, cShamei1 TEXT, cShamei2 TEXT, cShameiKana1 TEXT, cShameiKana2 TEXT, cShamei1Ryaku TEXT,
    cDaihyo TEXT, cDaihyoKana TEXT, cYubinNo TEXT, cAddress1 TEXT, cAddress2 TEXT, cAddressKana TEXT,
    cTelNo TEXT, cFaxNo TEXT, cKikanNo TEXT,
    iKinSyubetsu INTEGER, cKinyuName TEXT, iKinSiten INTEGER, cKinyuSiten TEXT,
    iKozaType INTEGER, cKozaBangou TEXT, cKozaMeigi1 TEXT, cKozaMeigi2 TEXT, cKozaKana TEXT,
    nLat REAL, nLon REAL, cComment TEXT, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS RIYOUSHA_MAP (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    bAddr1 TEXT, bAddr2 TEXT, bAddr3 TEXT, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS SISETSU (
    nIDNo INTEGER NOT NULL PRIMARY KEY, iKyotenCd INTEGER, iKyotenEb INTEGER,
    iKikanShubetsu INTEGER, cSisetsuType TEXT, nOyaSisetsuCd INTEGER,
    cShamei1 TEXT, cShamei2 TEXT, cShameiKana1 TEXT, cShameiKana2 TEXT, cShamei1Ryaku TEXT,
    cDaihyo TEXT, cDaihyoKana TEXT, cYubinNo TEXT, cAddress1 TEXT, cAddress2 TEXT, cAddressKana TEXT,
    cTelNo TEXT, cFaxNo TEXT, cDouiIrai TEXT, cComment TEXT,
    iType INTEGER, nLat REAL, nLon REAL, nColorCode INTEGER, iColorIndex INTEGER, iPaymentType INTEGER,
    cPcName TEXT, tUpDateTime TEXT);

CREATE TABLE IF NOT EXISTS HOKEN (
    iType INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    cName TEXT, cRyaku TEXT, cType TEXT, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (iType, iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS HOKENJA (
    cIDno TEXT NOT NULL PRIMARY KEY, iKyotenCd INTEGER, iKyotenEb INTEGER, iHoken INTEGER,
    cName TEXT, cNameKana TEXT, cYubinNo TEXT, cAddress1 TEXT, cAddress2 TEXT, cTelNo TEXT, cFaxNo TEXT,
    iIninFlg INTEGER, tIninDay TEXT, cPcName TEXT, tUpDateTime TEXT);

CREATE TABLE IF NOT EXISTS DOCTOR (
    cIDNo TEXT NOT NULL, nIDNo INTEGER, iKyotenCd INTEGER, iKyotenEb INTEGER, iSisetsuCode INTEGER,
    cName TEXT, cNameKana TEXT, cKikan TEXT, cKikanKana TEXT, cKamoku TEXT,
    cYubinNo TEXT, cAddress1 TEXT, cAddress2 TEXT, cTelNo TEXT, cFaxNo TEXT, cComment TEXT,
    cPcName TEXT, tUpdateTime TEXT,
    PRIMARY KEY (cIDNo));

CREATE TABLE IF NOT EXISTS STAFF (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    cName TEXT, cNameRyaku TEXT, cNameKana TEXT, iSex INTEGER, tBirthday TEXT, iSikaku INTEGER,
    cSikakuNo TEXT, cYubinNo TEXT, cAdress1 TEXT, cAdress2 TEXT, cTelNo TEXT, cMobNo TEXT,
    iChusiFlg INTEGER, nColorCode INTEGER, cComment TEXT, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS SOUDAN (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL, iSisetsuCode INTEGER,
    cName TEXT, cNameKana TEXT, cKikan TEXT, cKikankana TEXT, cYubinNo TEXT, cAdress1 TEXT, cAdress2 TEXT,
    cTelNo TEXT, cFaxNo TEXT, cPcName TEXT, tUpdateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS SOUDAN_TANTOU (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER, iKyotenEb INTEGER,
    iStaffKyotenCd INTEGER, iStaffKyotenEb INTEGER, nStaffIDNo INTEGER, cPcName TEXT, tUpDateTime TEXT);

CREATE TABLE IF NOT EXISTS SYOUKAI (
    nIDNo INTEGER NOT NULL PRIMARY KEY, cIDNo TEXT, iKyotenCd INTEGER, iKyotenEb INTEGER, iSisetsuCode INTEGER,
    cName TEXT, cNameKana TEXT, cKikan TEXT, cYubinNo TEXT, cAdress1 TEXT, cAdress2 TEXT,
    cTelNo TEXT, cFaxNo TEXT, cPcName TEXT, tUpDateTime TEXT);

CREATE TABLE IF NOT EXISTS CAREMANE (
    nIDNo INTEGER NOT NULL PRIMARY KEY, iKyotenCd INTEGER, iKyotenEb INTEGER, iSisetsuCode INTEGER,
    cName TEXT, cNameKana TEXT, cJigyousyoNo TEXT, cYubinNo TEXT, cAdress1 TEXT, cAdress2 TEXT,
    cTelNo TEXT, cFaxNo TEXT, cPcName TEXT, tUpdateTime TEXT);

CREATE TABLE IF NOT EXISTS SHINSEISYO (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    iTekiyouStaff INTEGER, iKanagawaStaffPrint INTEGER, cFileName TEXT, cDispName TEXT,
    iSejutsuKubun INTEGER, iHokenType INTEGER, iDelFlg INTEGER, iSinseiTP INTEGER, iSoufushoTP INTEGER,
    iDuplexFlg INTEGER, iStateNo INTEGER, iRiyouHokenKbn INTEGER, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));

CREATE TABLE IF NOT EXISTS ADDRESS (
    nKanjaCD INTEGER NOT NULL, iKyotenCd INTEGER, iKyotenEb INTEGER, tStartDay TEXT, csKanjaName TEXT,
    iAddressSet INTEGER, csSelectAddress TEXT, csAddress1 TEXT, csAddress2 TEXT, csAddress3 TEXT,
    csStation1 TEXT, csStation2 TEXT, csStation3 TEXT,
    nHokui1 REAL, nHokui2 REAL, nHokui3 REAL, nToukei1 REAL, nToukei2 REAL, nToukei3 REAL,
    nLen1 INTEGER, nLen2 INTEGER, nLen3 INTEGER, cSisetsuName TEXT, nSisetsuCd INTEGER,
    cSisetsuAddress TEXT, nLimit INTEGER, cPcName TEXT, tUpDateTime TEXT);
CREATE INDEX IF NOT EXISTS IX_ADDRESS_KANJA ON ADDRESS (nKanjaCD, iKyotenCd, iKyotenEb, tStartDay);

CREATE TABLE IF NOT EXISTS RIYOUSHA (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    cName TEXT, cNameRyaku TEXT, cNameKana TEXT, iSex INTEGER, tBirthday TEXT,
    cCityNo TEXT, cJukyuNo TEXT, cHokenKigouNo TEXT, cHokenKigouNo2 TEXT, cHokenNo TEXT, cHokenNo2 TEXT,
    cFutanNo TEXT, iHoken INTEGER, cHokenJname TEXT, cHokenJname2 TEXT, iSyogai INTEGER, cSyogaiNo TEXT,
    cSyogaiJu TEXT, cSyogaiFname TEXT, iKaigoLevel INTEGER, iFutanritsu INTEGER, iJikofutanKubun INTEGER,
    nJikofutanTanka INTEGER, cHokenJSubAddress TEXT, cSyogaiFSubAddress TEXT,
    cYubinNo TEXT, cAdress1 TEXT, cAdress2 TEXT, cAddressKana TEXT, cTelNo TEXT, cFaxNo TEXT, cMobNo TEXT,
    cSetaiName TEXT, cSetaiKana TEXT, iSetaiSex INTEGER, cSetaiYubinNo TEXT, cSetaiAdress1 TEXT,
    cSetaiAdress2 TEXT, cSetaiAddKana TEXT, cSetaiTelNo TEXT, cSetaiFaxNo TEXT, cSetaiMobNo TEXT,
    cSetaiTsuzuki TEXT, tSetaiBirthday TEXT,
    iTikuNo INTEGER, nHokui REAL, nToukei REAL, iHoseUmu INTEGER, nLenFix INTEGER, nLenInp INTEGER,
    nLenAdd INTEGER, nHoseLen INTEGER, iHoseCol INTEGER, iHoseCut INTEGER, iVisitFlg INTEGER,
    iOuryoCalType INTEGER, iOuryouKyoka INTEGER,
    nTantou INTEGER, nTantou2 INTEGER, nTantou3 INTEGER, nTantou4 INTEGER, nTantou5 INTEGER,
    nTantou6 INTEGER, nTantou7 INTEGER, nTantou8 INTEGER, nTantou9 INTEGER, nTantou10 INTEGER,
    cByoumei TEXT, iV INTEGER, iSys INTEGER,
    iSejutuBui1 INTEGER, iSejutuBui2 INTEGER, iSejutuBui3 INTEGER, iSejutuBui4 INTEGER, iSejutuBui5 INTEGER,
    iHenke INTEGER, iOnan INTEGER, iDenki INTEGER,
    iSejutuBui11 INTEGER, iSejutuBui12 INTEGER, iSejutuBui13 INTEGER, iSejutuBui14 INTEGER,
    iSejutuBui15 INTEGER, iOnan1 INTEGER, iDenki1 INTEGER,
    tHenkeSday TEXT, tHenKeEday TEXT, tOnanSday TEXT, tOnanEday TEXT, tDenkiSday TEXT, tDenkiEday TEXT,
    iPtype INTEGER, iGyoumuUmu INTEGER, cGeninKeika TEXT, tHatsubyou TEXT, tSyoryoDay TEXT, tSyosinDay TEXT,
    tStartDay TEXT, tKHkigen TEXT, iSejutsuKubun INTEGER,
    nHKSyobyouCd INTEGER, cHKSyobyouName TEXT, iHKSyokaiHiyo INTEGER, iHKHariUmu INTEGER, iHKKyuUmu INTEGER,
    iHKDekiUmu INTEGER, tHKHariSday TEXT, tHKHariEday TEXT, tHKKyuSday TEXT, tHKKyuEday TEXT,
    tHKDenkiSday TEXT, tHKDenkiEday TEXT, iHKHari1Umu INTEGER, iHKKyu1Umu INTEGER, iHKDeki1Umu INTEGER,
    tHenkeSday2 TEXT, tHenKeEday2 TEXT, tOnanSday2 TEXT, tOnanEday2 TEXT, tDenkiSday2 TEXT, tDenkiEday2 TEXT,
    tHKHariSday2 TEXT, tHKHariEday2 TEXT, tHKKyuSday2 TEXT, tHKKyuEday2 TEXT, tHKDenkiSday2 TEXT,
    tHKDenkiEday2 TEXT,
    cHTno TEXT, tHTStartDay TEXT, cHTRiyuu TEXT, cHTIryoName TEXT, cHTIryoYubin TEXT, cHTIryoAdd TEXT,
    cDouiIsiName1 TEXT, cDouiIsiKikan1 TEXT, cDouiIsiAdd1 TEXT, cDouiByoumei1 TEXT, tDouiDay1 TEXT,
    tDouiKaryoS1 TEXT, tDouiKaryoE1 TEXT,
    cDouiIsiName2 TEXT, cDouiIsiKikan2 TEXT, cDouiIsiAdd2 TEXT, cDouiByoumei2 TEXT, tDouiDay2 TEXT,
    tDouiKaryoS2 TEXT, tDouiKaryoE2 TEXT, tDouishoSaishutokuFrom TEXT, tDouishoSaishutokuTo TEXT,
    cSyoumeiName TEXT, cSyoumeiYubin TEXT, cSyoumeiAdd TEXT, cSyoumeiTel TEXT, tSyoumeiDay TEXT,
    nDairiID INTEGER, cSinseiName TEXT, cSinseiYubin TEXT, cSinseiAdd TEXT, cSinseiTel TEXT, tSinseiDay TEXT,
    cSinseiAtena TEXT,
    iSeiKyuKubun INTEGER, iTenki INTEGER, cTekiyou TEXT, cBikou TEXT, iKinSyubetsu INTEGER, cKinName TEXT,
    iKinSiten INTEGER, cKinSiten TEXT, iKozaSyubetsu INTEGER, cKozaNo TEXT, cKozaName TEXT, cKozaKana TEXT,
    iKozaKubun INTEGER, cComment TEXT, cYotei TEXT, iPcnt INTEGER,
    nRoomNo INTEGER, iRoomAnbunUmu INTEGER,
    nBeforeIDNo INTEGER, nAfterIDNo INTEGER, tIDKirikaeDate TEXT, cBikou02 TEXT, iSejutuEnd INTEGER,
    iHokouType INTEGER, tExpireDay TEXT,
    cKaigoHiHoNo TEXT, cKaigoHokensyaNo TEXT, iKaigoYoukaigo INTEGER, tKaigoNinteiSt TEXT,
    tKaigoNinteiEd TEXT, tKaigoServiceSt TEXT, tKaigoServiceEd TEXT,
    iDouiNo INTEGER, tDouiYM TEXT, cDouiItiranBikou TEXT,
    cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));
CREATE INDEX IF NOT EXISTS IX_RIYOUSHA_SITE ON RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo);

CREATE TABLE IF NOT EXISTS RIYOUSHA_SUB (
    nIDNo INTEGER NOT NULL, iKyotenCd INTEGER NOT NULL, iKyotenEb INTEGER NOT NULL,
    iAddressSet INTEGER, iAddressSisetsuCd INTEGER, iAddressSisetsuCd2 INTEGER, iAddressSisetsuCd3 INTEGER,
    iCareSisetsuCd INTEGER, iCareCd INTEGER, cCareTelNo TEXT, iSyoukaiSisetsuCd INTEGER, cSyoukaiTelNo TEXT,
    iIsiCd INTEGER, iIsiCd2 INTEGER, iRiyouJoseiUmu INTEGER, cJoseiNo TEXT,
    cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nIDNo, iKyotenCd, iKyotenEb));
CREATE INDEX IF NOT EXISTS IX_RIYOUSHA_SUB_SITE ON RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo);

CREATE TABLE IF NOT EXISTS 月間実績 (
    患者IDNo INTEGER, iKyotenCd INTEGER, iKyotenEb INTEGER,
    実績年 INTEGER, 実績月 INTEGER,
    施術回数 INTEGER, 総合計 INTEGER, 自己負担額 INTEGER, 自己負担額2 INTEGER, 実費料金 INTEGER,
    患者請求額 INTEGER, 往療料 INTEGER, cPcName TEXT, tUpDateTime TEXT);
CREATE INDEX IF NOT EXISTS IX_月間実績_SITE_MONTH ON 月間実績 (iKyotenCd, iKyotenEb, 実績年, 実績月, 患者IDNo);
CREATE INDEX IF NOT EXISTS IX_月間実績_PATIENT ON 月間実績 (患者IDNo, iKyotenCd, iKyotenEb, 実績年, 実績月);

CREATE TABLE IF NOT EXISTS JISSEKI (
    nSeqNo INTEGER PRIMARY KEY, iKyotenCd INTEGER, iKyotenEb INTEGER,
    nRiyoushaIDNo INTEGER, nStaffIDNo INTEGER, tServicyDayStart TEXT, tServicyDayEnd TEXT,
    iSejutsuKubun INTEGER, iAnbunUmu INTEGER, nGokeiKin INTEGER, nGokeiKinAnbun INTEGER,
    nFutankin INTEGER, nFutankinAnbun INTEGER, nOuryouKin INTEGER, nOuryouKinAnbun INTEGER,
    nKanjaSeikyu INTEGER, nJippiSejutu INTEGER, nOuryouKyori INTEGER, cPcName TEXT, tUpDateTime TEXT);
CREATE INDEX IF NOT EXISTS IX_JISSEKI_PATIENT ON JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart);

CREATE TABLE IF NOT EXISTS 療養費単価 (
    iTankaKbn INTEGER NOT NULL, nTankaCode INTEGER NOT NULL, cStartDate TEXT NOT NULL, cEndDate TEXT,
    cTankaName TEXT, nTanka INTEGER, cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (iTankaKbn, nTankaCode, cStartDate));

CREATE TABLE IF NOT EXISTS 往療費区分 (
    nMaxLen INTEGER NOT NULL, cStartDate TEXT NOT NULL, cEndDate TEXT, nKingakuOuryou INTEGER,
    cPcName TEXT, tUpDateTime TEXT,
    PRIMARY KEY (nMaxLen, cStartDate));
)sql";

} // namespace

QStringList suiteSchemaStatements()
{
    QStringList statements;
    const QStringList parts = QString::fromUtf8(kSchema).split(u';');
    for (const QString& part : parts) {
        const QString statement = part.trimmed();
        if (!statement.isEmpty())
            statements.append(statement);
    }
    return statements;
}

bool createSuiteSchema(const QString& sqliteFile, QString* error)
{
    const QString connectionName = u"qelprn-schema-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, connectionName);
        db.setDatabaseName(sqliteFile);
        if (!db.open()) {
            ok = false;
            if (error)
                *error = u"データベースを作成できません: "_s + sqliteFile + u"\r\n"_s + db.lastError().text();
        } else {
            QSqlQuery query(db);
            db.transaction();
            for (const QString& statement : suiteSchemaStatements()) {
                if (!query.exec(statement)) {
                    ok = false;
                    if (error)
                        *error = query.lastError().text() + u"\r\n"_s + statement;
                    break;
                }
            }
            if (ok)
                ok = db.commit();
            else
                db.rollback();
            if (!ok && error && error->isEmpty())
                *error = db.lastError().text();
            query.finish();
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(connectionName);
    return ok;
}

} // namespace qelprn
