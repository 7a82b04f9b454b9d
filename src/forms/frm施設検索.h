#pragma once

#include "forms/SearchDialogBase.h"

class QLineEdit;
class QSpinBox;

namespace qelprn {

// The facility pick-list: every facility of institution kind 1, filtered by name, reading and code.
class frm施設検索 : public SearchDialogBase
{
    // No Q_OBJECT: the meta-object compiler cannot read the class's Japanese name, and the class adds
    // no signals or slots of its own.
public:
    explicit frm施設検索(const AppContext& ctx, QWidget* parent = nullptr);

    // Loads the list once, preselecting code.
    qint16 iInit(qint32 code);
    // The chosen facility for the class: code, name and coordinates.
    void vGetSeledInf(qint32& code, QString& name, double& lat, double& lon) const;
    // The own site's facilities by code (the form's master load); -1 on failure (shown).
    qint16 iMastDataLoad(QList<std::pair<qint32, QString>>& out);

    QSpinBox* in_SiboriID = nullptr;
    QLineEdit* txt_SiboriName = nullptr;
    QLineEdit* txt_SiboriKana = nullptr;

protected:
    QString listSql() const override;
    QStringList cellsOf(const RecordSet& rs) const override;
    QString noRowsText() const override;
    QString conditionSummary() const override;
    void takeChoice(const QStringList& cells) override;

private:
    double m_lat = 0;
    double m_lon = 0;
};

} // namespace qelprn
