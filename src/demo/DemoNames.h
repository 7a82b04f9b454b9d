#pragma once

#include "demo/DemoRandom.h"

#include <QString>

namespace qelprn {

// Written form and reading of a generated Japanese name or place.
struct DemoName
{
    QString kanji;
    QString kana; // full-width katakana, family and given name separated by a full-width space
};

struct DemoAddress
{
    QString yubinNo;  // "123-4567"
    QString address1; // prefecture, city and town
    QString address2; // block and building
    QString kana;
    QString telNo;
    QString faxNo;
};

// Pools of common Japanese names, facility words and towns for the demo data.
namespace DemoNames {

DemoName person(DemoRandom& rng, bool female);
DemoName facility(DemoRandom& rng, const QString& kind);
// The house word of a name ("さくら"), for the corporation that runs several homes.
DemoName houseWord(DemoRandom& rng);
DemoAddress address(DemoRandom& rng);
QString doctorInstitution(DemoRandom& rng);
QString disease(DemoRandom& rng);

} // namespace DemoNames

} // namespace qelprn
