#pragma once

#include <QtGlobal>

namespace qelprn {

// Statements sent to the databases and connections opened since the program started, so that a
// run can report its own share (the difference of two readings). Every statement costs a round
// trip on a server across the network; the count shows whether a run's cost grows with its rows.
struct DbTraffic
{
    qint64 statements = 0;
    qint64 connections = 0;

    DbTraffic operator-(const DbTraffic& earlier) const
    {
        return {statements - earlier.statements, connections - earlier.connections};
    }
};

DbTraffic dbTraffic();
void countStatement();
void countConnection();

} // namespace qelprn
