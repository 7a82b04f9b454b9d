#include "billing/SeikyuLine.h"

#include "billing/RecordFields.h"

using namespace Qt::StringLiterals;

namespace qelprn {

SisetsuSeikyuRow readSeikyuMeisai(const RecordSet& rs, const PrintJouken& jouken)
{
    SisetsuSeikyuRow line;
    line.iSinryouType = fieldInt(rs, u"SINRYOU_TYPE"_s);
    line.cSejutsuYM = jouken.sSeikyuYM + u"/01"_s;
    line.cTeisyutuDate = jouken.sTeisyutuDate;
    const QString sejutsuName = fieldText(rs, u"SEJUTSU_NAME"_s);
    line.nSejutsuKanjaSeikyu = fieldLong(rs, u"SEJUTSU_KANJASEIKYU"_s);
    if (line.iSinryouType == 0) {
        line.cSejutsuName = sejutsuName;
        line.iSejutsuNinzu = fieldInt(rs, u"SEJUTSU_NINZU"_s);
        line.nSejutsuGoukei = fieldLong(rs, u"SEJUTSU_GOUKEI"_s);
    } else {
        line.cSejutsuName = sejutsuName + u"(自費)"_s;
        line.nRoomNo = fieldLong(rs, u"ROOMNO"_s);
        line.cRiyoushaName = fieldText(rs, u"RIYOUSHA_NAME"_s) + u" 様"_s;
    }
    return line;
}

void readSeikyuSaki(const RecordSet& rs, SisetsuSeikyuRow& line)
{
    line.nSeikyuID = fieldLong(rs, u"SEIKYU_ID"_s);
    line.cSeikyuName = fieldText(rs, u"SEIKYU_NAME"_s);
    line.cSeikyuYubin = fieldText(rs, u"SEIKYU_YUBIN"_s);
    line.cSeikyuAddress1 = fieldText(rs, u"SEIKYU_ADDRESS1"_s);
    line.cSeikyuAddress2 = fieldText(rs, u"SEIKYU_ADDRESS2"_s);
}

void readSeikyuSaki(const RecordSet& rs, SisetsuSeikyuGroup& group)
{
    SisetsuSeikyuRow saki;
    readSeikyuSaki(rs, saki);
    group.nSeikyuID = saki.nSeikyuID;
    group.cSeikyuName = saki.cSeikyuName;
    group.cSeikyuYubin = saki.cSeikyuYubin;
    group.cSeikyuAddress1 = saki.cSeikyuAddress1;
    group.cSeikyuAddress2 = saki.cSeikyuAddress2;
}

void readCorpTiryoin(const RecordSet& rs, SisetsuSeikyuRow& line)
{
    line.cCorpName = fieldText(rs, u"CORP_NAME"_s);
    line.cCorpYubin = fieldText(rs, u"CORP_YUBIN"_s);
    line.cCorpAddress1 = fieldText(rs, u"CORP_ADDRESS1"_s);
    line.cTiryoinName = fieldText(rs, u"TIRYOIN_NAME"_s);
    line.cTiryoinYubin = fieldText(rs, u"TIRYOIN_YUBIN"_s);
    line.cTiryoinAddress1 = fieldText(rs, u"TIRYOIN_ADDRESS1"_s);
}

} // namespace qelprn
