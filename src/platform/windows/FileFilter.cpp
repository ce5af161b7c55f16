#include "platform/windows/FileFilter.h"

#include <algorithm>

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

// Behind the last point of the name; null without one.
QString ExtensionOf(const QString& path) {
    const qsizetype name = std::max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1;
    const qsizetype point = path.lastIndexOf('.');
    return point < name ? QString() : path.mid(point + 1).toLower();
}

// Other names of one extension.
QString Usual(const QString& extension) {
    return extension == "jpeg" || extension == "jpe" || extension == "jif" ? "jpg"
                                                                           : extension;
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

bool FileFilter::Fits(const QString& path) const {
    const QString extension = ExtensionOf(path);
    return std::any_of(Patterns.begin(), Patterns.end(), [&](const QString& pattern) {
        return pattern == "*.*" ||
               (!extension.isNull() && Usual(extension) == Usual(ExtensionOf(pattern)));
    });
}

int FilterOf(const QString& path, const QList<FileFilter>& filters, int chosen) {
    if (filters.value(chosen).Fits(path))
        return chosen;
    const auto fits = [&](const FileFilter& filter) { return filter.Fits(path); };
    const auto other = std::find_if(filters.begin(), filters.end(), fits);
    return other == filters.end() ? chosen : static_cast<int>(other - filters.begin());
}

QString CompletedName(const QString& path, const QList<FileFilter>& filters, int chosen) {
    const QString extension = filters.value(chosen).Extension();
    if (extension.isEmpty() || filters.value(FilterOf(path, filters, chosen)).Fits(path))
        return path;
    return path + (path.endsWith('.') ? "" : ".") + extension;
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
