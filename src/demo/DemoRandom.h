#pragma once

#include <QList>
#include <QtGlobal>
#include <cstdint>

namespace qelprn {

// The demo data's own generator (SplitMix64): the same seed gives the same data set on every
// platform and library version, which std::rand and the standard distributions do not promise.
class DemoRandom
{
public:
    explicit DemoRandom(quint64 seed) : m_state(seed) {}

    quint64 next()
    {
        quint64 z = (m_state += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    // A whole number in [low, high], both included.
    int between(int low, int high)
    {
        if (high <= low)
            return low;
        return low + int(next() % quint64(high - low + 1));
    }
    // True with the given percentage.
    bool percent(int p) { return between(0, 99) < p; }
    template <typename T> const T& pick(const QList<T>& list)
    {
        return list.at(between(0, int(list.size()) - 1));
    }

private:
    quint64 m_state;
};

} // namespace qelprn
