#pragma once

#include "billing/SisetsuSeikyuRow.h"

#include <QList>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// One billing facility of the multi-database result; its lines leave the billing fields empty.
struct SisetsuSeikyuGroup
{
    qint32 nSeikyuID = 0;
    QString cSeikyuName;
    QString cSeikyuYubin;
    QString cSeikyuAddress1;
    QString cSeikyuAddress2;
    QList<SisetsuSeikyuRow> aMeisai;
    qint16 iMeisaiCnt = 0;
};

} // namespace qelprn
