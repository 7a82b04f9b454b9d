#pragma once

#include "app/AppContext.h"

#include <QWidget>

class QLabel;

namespace qelprn {

// The background window shown first: the wallpaper of "Tovara.ini" over the whole client area.
// Loading it also fixes the program folder and the own site (BASEID) in the context.
class frmBack : public QWidget
{
    Q_OBJECT

public:
    explicit frmBack(AppContext& ctx, QWidget* parent = nullptr);

    // False when the program folder's "Tovara.ini" is missing (the person was told).
    bool Form_Load();
    QLabel* ImgWall = nullptr;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    AppContext& m_ctx;
    QPixmap m_picture;
};

} // namespace qelprn
