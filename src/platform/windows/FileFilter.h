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
};

QList<FileFilter> ParseFilter(const std::string& filter);

} // namespace vardenix
