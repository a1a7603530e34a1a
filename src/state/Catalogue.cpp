#include "state/Catalogue.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <string>

namespace zu {
namespace {

bool SameIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

std::optional<int> RowNamed(std::string_view name) {
    for (int row = 0; row < kModelRows; ++row) {
        if (!HasShape(row)) continue;
        if (SameIgnoringCase(Model(row).FileLabel, name) || SameIgnoringCase(Model(row).ShortName, name)) {
            return row;
        }
    }
    return std::nullopt;
}

}  // namespace

const ModelTraits& Model(int row) {
    return kModels[row >= 0 && row < kModelRows ? static_cast<std::size_t>(row) : 0];
}

bool HasShape(int row) {
    return row >= 0 && row < kModelRows && Model(row).TotalChannels > 0;
}

const SeriesTraits& Series(int series) {
    static constexpr SeriesTraits kUnknown{"", "", "", 0, ""};
    return series >= 0 && series < kSeriesCount ? kSeries[static_cast<std::size_t>(series)] : kUnknown;
}

std::optional<int> RowOfFileLabel(std::string_view label) {
    if (label.empty()) return std::nullopt;
    for (int row = 0; row < kModelRows; ++row) {
        if (Model(row).FileLabel == label) return row;
    }
    return std::nullopt;
}

std::optional<int> RowOfUserText(std::string_view text) {
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc{} && end == text.data() + text.size()) {
        return HasShape(number) ? std::optional(number) : std::nullopt;
    }
    if (const auto row = RowNamed(text)) return row;
    return RowNamed(std::string(text) + "B");  // users say "Roach160L" of the one that is sold, Roach160LB
}

}  // namespace zu
