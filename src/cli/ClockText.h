#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/App.h"

namespace zu {

/// Code of a rate that a user names by frequency or period, "100MHz", "10 MSa/s", "62.5k", "10ns"; nothing
/// for a text without a meaning or a rate that the table does not have.
std::optional<int> ParseRate(std::string_view text);
/// Sets a rate of the internal clock that the model offers. Answers what is wrong; the rate stays then.
std::optional<std::string> ApplyRate(App& app, std::string_view text);
/// Sets a memory mode that the menu offers at the present rate, by its number. Answers what is wrong.
std::optional<std::string> ApplyMemoryMode(App& app, int mode);

/// Rates, as the menu writes them, that the model offers.
std::string OfferedRates(const App& app);

}  // namespace zu
