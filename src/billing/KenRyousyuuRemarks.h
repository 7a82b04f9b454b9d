#pragma once

#include <QString>

namespace qelprn {

// The remark texts of the invoice-receipt, each a list of words joined with "、" and empty when
// nothing applies. The settings come from the patient's consent in force.

// "マッサージ" followed by the number of body parts and "部位"; empty without any part.
QString bodyPartRemark(int partCount);
// "徒手矯正" when deformity correction is set.
QString deformityRemark(bool henke);
// The acupuncture / moxibustion treatment, in its electric form when electric treatment is set.
QString sinkyuRemark(bool hari, bool kyu, bool denki);
// The treatment content of the day: parts remark, warm compress, electric treatment.
QString dayContentRemark(int partCount, bool onan, bool denki);

} // namespace qelprn
