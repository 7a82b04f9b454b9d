#pragma once

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace qelprn::DemoFees {

// Unit prices (yen) of the current fee schedule; every amount is a multiple of 10 so that a
// burden share in tenths is a whole number of yen.
constexpr int kMassagePerPart = 450;
constexpr int kHenke = 470;
constexpr int kOnan = 80;
constexpr int kDenki = 100;
constexpr int kHari1 = 1610;
constexpr int kHari2 = 1770;
constexpr int kHariDenki = 300;
constexpr int kJippiSejutu = 3000;
constexpr int kJippiKoutsu = 500;

// The house-call fee of a visit distance (the band whose upper limit is not below it).
int houseCallFee(int distance);

// Writes 療養費単価 and 往療費区分: an older schedule that ended before the month before the
// billing month, and the current one, valid for both generated months. Returns the first error.
QString writeFeeTables(QSqlDatabase& db, QDate month);

} // namespace qelprn::DemoFees
