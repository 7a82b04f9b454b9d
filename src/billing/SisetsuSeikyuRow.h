#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

// One line of the facility invoice, in the order the print-data writer maps its columns.
struct SisetsuSeikyuRow
{
    qint32 nSeikyuID = 0; // billing facility; -1 when the treated facility has none
    QString cSeikyuName;
    QString cSeikyuYubin;
    QString cSeikyuAddress1;
    QString cSeikyuAddress2;
    QString cSejutsuYM;    // billing month "yyyy/mm/01"
    QString cTeisyutuDate; // issue date
    QString cSejutsuName;  // type 1 carries "(自費)"
    qint16 iSejutsuNinzu = 0;
    qint32 nSejutsuGoukei = 0;
    qint32 nSejutsuKanjaSeikyu = 0;
    QString cCorpName;
    QString cCorpYubin;
    QString cCorpAddress1;
    QString cTiryoinName;
    QString cTiryoinYubin;
    QString cTiryoinAddress1;
    qint16 iSinryouType = 0; // 0 facility line, 1 self-pay line, -1 blank filler
    qint16 iGyoNo = 0;       // line number in the billing facility's block (single database only)
    qint32 nRoomNo = 0;
    QString cRiyoushaName; // type 1: name & " 様"
};

} // namespace qelprn
