#include "db/DbTraffic.h"

#include <atomic>

namespace qelprn {

namespace {

std::atomic<qint64> statementsSent{0};
std::atomic<qint64> connectionsOpened{0};

} // namespace

DbTraffic dbTraffic()
{
    return {statementsSent.load(std::memory_order_relaxed),
            connectionsOpened.load(std::memory_order_relaxed)};
}

void countStatement()
{
    statementsSent.fetch_add(1, std::memory_order_relaxed);
}

void countConnection()
{
    connectionsOpened.fetch_add(1, std::memory_order_relaxed);
}

} // namespace qelprn
