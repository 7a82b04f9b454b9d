#pragma once

#include "forms/SearchDialogBase.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace qelprn {

// The practitioner pick-list: the practitioners of the chosen site, filtered by name, reading, code
// and consultant, the ended ones only on request.
class frm施術者検索 : public SearchDialogBase
{
    // No Q_OBJECT: the meta-object compiler cannot read the class's Japanese name, and the class adds
    // no signals or slots of its own.
public:
    explicit frm施術者検索(const AppContext& ctx, QWidget* parent = nullptr);

    // Loads the site list (own site selected) and the practitioners once, preselecting code.
    qint16 iInit(qint32 code);
    void vGetSeledInf(qint32& code, QString& name) const;

    QSpinBox* in_SiboriID = nullptr;
    QLineEdit* txt_SiboriName = nullptr;
    QLineEdit* txt_SiboriKana = nullptr;
    QCheckBox* chk_Chusi = nullptr;
    QComboBox* cmb_Kyoten = nullptr;
    QSpinBox* in_SoudanID = nullptr;

protected:
    QString listSql() const override;
    QStringList cellsOf(const RecordSet& rs) const override;
    QString noRowsText() const override;
    QString conditionSummary() const override;
    bool acceptsRow(const QStringList& cells, const QStringList& previous) const override;

private:
    qint16 loadKyotenList();
    std::pair<int, int> selectedSite() const;
};

} // namespace qelprn
