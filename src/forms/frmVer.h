#pragma once

#include "app/AppContext.h"

#include <QDialog>

class QLabel;
class QListWidget;

namespace qelprn {

// The version dialog: the current version and the history from "Version.ini" in the data folder
// (records "number,description"; the first is the current version).
class frmVer : public QDialog
{
    Q_OBJECT

public:
    static constexpr const char* kVersionLabel = "Halvex V3.5";
    static constexpr const char* kBuildId = "QLPR35-1123-0001";

    // minVersion: history records below this version number are left out (0: all).
    frmVer(const AppContext& ctx, const QString& caption, int minVersion = 0, QWidget* parent = nullptr);

    QLabel* laVer = nullptr;
    QListWidget* lstVer = nullptr;

private:
    void loadVersionFile(const AppContext& ctx, int minVersion);
};

} // namespace qelprn
