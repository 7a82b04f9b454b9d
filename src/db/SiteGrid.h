#pragma once

#include <QString>

namespace qelprn {

// The three operations the site loaders need from the main form's site grid. Columns and rows are
// 1-based: column 1 site name, 2 database, 3 site code, 4 branch number.
class SiteGrid
{
public:
    virtual ~SiteGrid() = default;
    virtual void setRowCount(int rows) = 0;
    virtual void setRedraw(bool on) = 0;
    virtual void setCellText(int col, int row, const QString& text) = 0;
};

} // namespace qelprn
