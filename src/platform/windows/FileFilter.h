#pragma once

#include <QString>
#include <QStringList>

#include <string>

namespace vardenix {

// One pair of a filter text "L2 Files | *.l2".
struct FileFilter {
    QString Description;  // "L2 Files"
    QStringList Patterns; // "*.l2"; several are parted by ";"

    // As the toolkit wants it. Its own dialog minds no case, but those of some desktops
    // do, so every letter of a pattern stands in both.
    QString ToolkitText() const;
    // Of the first pattern, without the point; empty for "*.*".
    QString Extension() const;
    // Whether a name ends as one of the patterns does, in any case; "m1.jpeg" as
    // "*.jpg".
    bool Fits(const QString& path) const;
};

QList<FileFilter> ParseFilter(const std::string& filter);

// The filter, from 0, that a file is picked by: the one that was chosen, unless the
// file's extension is that of another one. So a name decides what it stands for.
int FilterOf(const QString& path, const QList<FileFilter>& filters, int chosen);

// The name that a save writes: as it was typed when it has the extension of a filter,
// else with that of the chosen one behind it ("map_1.5" becomes "map_1.5.bmp").
QString CompletedName(const QString& path, const QList<FileFilter>& filters, int chosen);

} // namespace vardenix
