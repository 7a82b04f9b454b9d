#pragma once

#include <QList>
#include <QString>

namespace qelprn::engine {

// One data file the layout is filled from ("SetDataText").
struct DataSource
{
    QString name;         // the data name the layout asks for
    QString path;         // resolved: a bare file name is taken from the command file's folder
    bool noTitle = false; // the file has no title line (",,,1")
    int line = 0;         // command file line, for messages
};

// A value set for a named layout item ("SetItemValue"); item is "section.item" or "item".
struct ItemValue
{
    QString item;
    QString value;
    int line = 0;
};

// What the command file "WfdCom.dat" asks for.
struct EngineJob
{
    enum class Action { None, Preview, PrintOut, PrintOutFromDialog };

    QString commandFile;
    QString layoutPath;
    int layoutLine = 0;
    QString title;
    QList<DataSource> data;
    int offsetX = 0; // 0.1 mm, added to every item's position when printing
    int offsetY = 0;
    int zoom = 2;        // 2 keeps the layout's own scale; otherwise a percentage
    int repeatStart = 0; // the first detail slot to fill on the first page (1-based; 0 = first)
    QString paper;       // "A4", "B5", "A5" or "" for the layout's paper
    QList<ItemValue> items;
    Action action = Action::None;
};

} // namespace qelprn::engine
