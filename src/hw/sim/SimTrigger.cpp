#include "hw/sim/SimTrigger.h"

#include <algorithm>

namespace zu {
namespace {

/// Bits that are set in every entry of a table: lanes that match whatever comes.
std::uint8_t LanesThatAlwaysMatch(const SimTriggerTable& table) {
    std::uint8_t all = 0xFF;
    for (const std::uint8_t entry : table) all &= entry;
    return all;
}

}  // namespace

void SimTrigger::Start(const std::vector<SimBoard>& boards, int fitted, const SimTriggerSetup& setup) {
    setup_ = setup;
    page_ = setup.StartPage;
    ready_ = false;
    eventsToGo_ = setup.Count;
    lasted_ = 0;
    now_.fill({0, -kForever});
    for (std::vector<Lane>& lanes : lanes_) lanes.clear();
    for (int page = page_; page <= kLastTriggerPage; ++page) {
        for (int board = 0; board < fitted; ++board) {
            const SimTriggerTable& table = boards[static_cast<std::size_t>(board)].TriggerTable(page);
            const std::uint8_t always = LanesThatAlwaysMatch(table);
            for (int lane = 0; lane < kSimLanes; ++lane) {
                const auto mask = static_cast<std::uint8_t>(1 << lane);
                if ((always & mask) != 0) continue;
                lanes_[static_cast<std::size_t>(page)].push_back(
                    {table.data(), mask, board * kSimLanes + lane});
            }
        }
    }
}

SimRun SimTrigger::Match(SimStimulus& stimulus, SimTicks time) {
    SimRun result{1, kForever};
    for (const Lane& lane : lanes_[static_cast<std::size_t>(page_)]) {
        SimRun& run = now_[static_cast<std::size_t>(lane.Pod)];
        if (run.Until <= time) run = stimulus.At(lane.Pod, time);
        const bool match = (lane.Table[run.Value] & lane.Mask) != 0;
        if (!match && result.Value != 0) {
            result = {0, run.Until};  // one lane that does not match is enough
        } else if (match == (result.Value != 0)) {
            result.Until = match ? std::min(result.Until, run.Until) : std::max(result.Until, run.Until);
        }
    }
    return result;
}

SimTrigger::Step SimTrigger::Take(bool match, std::int64_t count) {
    const bool active = match != setup_.Inverts;
    if (page_ == kLastTriggerPage) return TakeOnLastPage(active, count);
    if (!active) ready_ = true;
    if (!active || !ready_) return {count, -1};
    ++page_;
    ready_ = false;
    return {1, -1};
}

SimTrigger::Step SimTrigger::TakeOnLastPage(bool active, std::int64_t count) {
    switch (setup_.Kind) {
        case SimTriggerKind::Lasts:
            return TakeLasting(active, count);
        case SimTriggerKind::EndsWithin:
            return TakeEnding(active, count);
        default:
            return TakeEvents(active, count);
    }
}

SimTrigger::Step SimTrigger::TakeEvents(bool active, std::int64_t count) {
    if (!active) {
        ready_ = true;
        return {count, -1};
    }
    if (!ready_) return {count, -1};
    ready_ = false;
    return {count, --eventsToGo_ == 0 ? 0 : -1};
}

SimTrigger::Step SimTrigger::TakeLasting(bool active, std::int64_t count) {
    if (!active) {
        ready_ = true;
        lasted_ = 0;
        return {count, -1};
    }
    if (!ready_) return {count, -1};
    const std::int64_t missing = setup_.Count - lasted_;
    lasted_ += count;
    return {count, missing <= count ? missing - 1 : -1};
}

SimTrigger::Step SimTrigger::TakeEnding(bool active, std::int64_t count) {
    if (active) {
        if (ready_) lasted_ += count;
        return {count, -1};
    }
    const bool ends = lasted_ > 0 && lasted_ <= setup_.Count;
    ready_ = true;
    lasted_ = 0;
    return {count, ends ? 0 : -1};
}

}  // namespace zu
