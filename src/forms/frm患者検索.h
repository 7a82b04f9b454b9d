#pragma once

#include "forms/SearchDialogBase.h"

#include <QDate>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace qelprn {

// The patient pick-list: the own site's patients, filtered by name, reading, telephone number,
// practitioner, treatment kind and code; patients whose treatment ended before a bound month only
// on request.
class frm患者検索 : public SearchDialogBase
{
    // No Q_OBJECT: the meta-object compiler cannot read the class's Japanese name, and the class adds
    // no signals or slots of its own.
public:
    // today: the day the "終了患者施術期間" bound is counted from.
    frm患者検索(const AppContext& ctx, QDate today, QWidget* parent = nullptr);

    // Loads the practitioner filter list and the patients once, preselecting code; tantou preselects
    // the practitioner filter (0: none).
    qint16 iInit(qint32 code, qint32 tantou = 0);
    void vGetSeledInf(qint32& code, QString& name) const;
    // The practitioner list of the practitioner filter (the form's master load); a failure or an
    // empty list is told in a message, and the dialog goes on without the filter's names.
    void iMastDataLoad();
    // The bound month "yyyy/mm": today moved back by "終了患者施術期間" months, "9999/12" without it.
    QString boundMonth() const { return m_bound; }

    int iArea = 0;
    QSpinBox* in_SiboriID = nullptr;
    QLineEdit* txt_SiboriName = nullptr;
    QLineEdit* txt_SiboriKana = nullptr;
    QLineEdit* txt_SiboriTel = nullptr;
    QCheckBox* chkEndKanja = nullptr;
    QComboBox* cmb_Tantou = nullptr;
    QComboBox* cmb_Sejutsu = nullptr;

protected:
    QString listSql() const override;
    QStringList cellsOf(const RecordSet& rs) const override;
    QString noRowsText() const override;
    QString conditionSummary() const override;

private:
    QString m_bound;
};

} // namespace qelprn
