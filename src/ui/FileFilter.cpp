#include "ui/FileFilter.h"

#include "ui/QtText.h"

namespace zu {
namespace {

/// The label without the pattern that it repeats in brackets.
QString PlainLabel(const QString& label) {
    const qsizetype bracket = label.lastIndexOf(QStringLiteral("(*"));
    return (bracket < 0 ? label : label.left(bracket)).trimmed();
}

QString BothCases(const QString& patterns) {
    QStringList all;
    for (const QString& pattern : patterns.split(u';', Qt::SkipEmptyParts)) {
        all.append(pattern.trimmed().toLower());
        all.append(pattern.trimmed().toUpper());
    }
    all.removeDuplicates();
    return all.join(u' ');
}

QString SuffixOf(const QString& patterns) {
    const QString first = patterns.section(u';', 0, 0).trimmed().toLower();
    const QString suffix = first.mid(first.lastIndexOf(u'.') + 1);
    return suffix.contains(u'*') || suffix.contains(u'?') ? QString() : suffix;
}

}  // namespace

FileFilters ParseFilters(std::string_view filters) {
    FileFilters result;
    const QStringList parts = FromState(filters).split(u'|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = parts.at(i + 1).trimmed();
        if (patterns.isEmpty()) continue;
        const QString label = PlainLabel(parts.at(i));
        result.Names.append(QStringLiteral("%1 (%2)").arg(label, BothCases(patterns)));
        result.Suffixes.append(SuffixOf(patterns));
    }
    return result;
}

}  // namespace zu
