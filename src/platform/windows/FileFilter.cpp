#include "platform/windows/FileFilter.h"

namespace vardenix {

namespace {

QString EitherCase(const QString& pattern) {
    if (pattern == "*.*")
        return "*"; // also names without a point, as users of this pattern expect
    QString both;
    for (const QChar letter : pattern) {
        if (letter.toLower() == letter.toUpper())
            both += letter;
        else
            both += QString("[%1%2]").arg(letter.toLower()).arg(letter.toUpper());
    }
    return both;
}

} // namespace

QString FileFilter::ToolkitText() const {
    QStringList either;
    for (const QString& pattern : Patterns)
        either += EitherCase(pattern);
    return QString("%1 (%2)").arg(Description, either.join(' '));
}

QString FileFilter::Extension() const {
    const QString first = Patterns.value(0);
    const QString extension = first.mid(first.lastIndexOf('.') + 1);
    return first.contains('.') && !extension.contains('*') ? extension : QString();
}

QList<FileFilter> ParseFilter(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split('|');
    QList<FileFilter> filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        FileFilter next{.Description = parts[i].trimmed(), .Patterns = {}};
        for (const QString& pattern : parts[i + 1].split(';', Qt::SkipEmptyParts))
            next.Patterns += pattern.trimmed();
        filters += next;
    }
    return filters;
}

} // namespace vardenix
