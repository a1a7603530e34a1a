#pragma once

#include "core/App.h"

namespace zu {

/// The whole change to a rate of the internal clock; the target of every rate entry.
void SetRate(App& app, int code);
/// Selects an external clock type and applies what it means for the memory.
void SetClockType(App& app, int type);
/// The entry "&Internal".
void SetInternalClock(App& app);
/// Sets the memory mode and runs the row's layout: buffer lengths, multiplexing, trigger cursor. mux -1 lets
/// the layout choose.
void SetMemoryMode(App& app, int mux, int mode);
/// What a change of rate means for memory. The new code is in force while the layout runs.
void RateChangeRule(App& app, int newCode);
/// Ties rate and memory mode to pattern generator pods; returns the code that may be used.
int CheckPatternGeneratorRate(App& app, int code);
/// Next offered code toward 0 and toward 34; nothing with an external clock or without such a code.
void RateUp(App& app);
void RateDown(App& app);
/// Trigger output on or off, with the clock types that exclude it.
void SetTrigOut(App& app, bool on);

/// Marks all 35 codes available.
void MarkAllRates(ClockRecord& clock);
/// Marks the codes that a row does not offer.
void MarkRowRates(ClockRecord& clock, int row);
/// Whether the menu may choose a code on the row; separate from RateAvail.
bool RateEntryEnabled(int row, int code);
/// Moves a current code that the row's menu does not allow, by SetRate. For the moment a menu opens.
void CorrectRate(App& app);

}  // namespace zu
