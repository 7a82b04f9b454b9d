#pragma once

#include "app/AppContext.h"

#include <QDate>
#include <QString>

class QLineEdit;
class QWidget;

namespace qelprn {

// What the main form asks about patients: the pick-list and the name of a typed code. Code 0 stands
// for every patient and is shown as "(全員)".
class cls患者検索
{
public:
    explicit cls患者検索(const AppContext& ctx) : m_ctx(ctx) {}

    int iArea = 0; // handed to the dialog
    QString CsErrStr;
    qint32 nSeledCD = 0;
    QString csSeledName;
    qint32 nTantouCD = 0; // practitioner filter preset of the dialog (0: none)

    // Shows the pick-list modally; 0 when a patient was chosen, 1 when closed without a choice.
    qint16 iDspStart(QWidget* parent = nullptr);
    // The patient's name into target ("(全員)" for 0); "" and -1 when there is no such patient.
    qint16 iSetRiyouName(qint32 code, QLineEdit& target);
    // The same as text.
    QString csSetRiyouName_Text(qint32 code);
    // The patient's short name into target.
    qint16 iSetRiyouName2(qint32 code, QLineEdit& target);

private:
    const AppContext& m_ctx;
};

} // namespace qelprn
