#pragma once

#include <string_view>

#include <QStringList>

namespace zu {

/// What a file dialog offers.
struct FileFilters {
    QStringList Names;     ///< as "Data File (*.zu *.ZU)"
    QStringList Suffixes;  ///< of each filter, lower case without a dot; empty for none
};

/// Filters from pairs as in "Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI||". Each pattern matches in
/// both cases; a pair without a pattern is dropped.
FileFilters ParseFilters(std::string_view filters);

}  // namespace zu
