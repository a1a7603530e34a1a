#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "hw/sim/SimBoard.h"
#include "hw/sim/SimStimulus.h"

namespace zu {

inline constexpr int kLastTriggerPage = kSimTriggerPages - 1;

/// What the last page of a sequence asks for.
enum class SimTriggerKind : std::uint8_t {
    Events,     ///< so many events
    Lasts,      ///< an active state of so many samples
    EndsWithin  ///< the end of an active state of at most so many samples
};

/// How the registers set the trigger up.
struct SimTriggerSetup {
    int StartPage = kLastTriggerPage;
    SimTriggerKind Kind = SimTriggerKind::Events;
    int Count = 1;         ///< 1 to 256
    bool Inverts = false;  ///< a sample is active when the words do not match
};

/// The trigger: walks the pages of the trigger memory from sample to sample. A page's event is the first
/// active sample after an inactive one; the last page fires.
class SimTrigger {
  public:
    /// Takes the tables of `boards`, which must stay where they are, and waits on the start page.
    void Start(const std::vector<SimBoard>& boards, int fitted, const SimTriggerSetup& setup);

    /// Whether the present page matches, and until when it will at least. `time` never goes back.
    [[nodiscard]] SimRun Match(SimStimulus& stimulus, SimTicks time);

    struct Step {
        std::int64_t Taken = 0;   ///< samples used up, at least 1
        std::int64_t Fired = -1;  ///< which of them is the trigger, -1 none
    };
    /// Takes `count` samples, at least 1, that all match or all do not.
    Step Take(bool match, std::int64_t count);
    [[nodiscard]] int Page() const { return page_; }

  private:
    struct Lane {
        const std::uint8_t* Table;
        std::uint8_t Mask;
        int Pod;
    };
    Step TakeOnLastPage(bool active, std::int64_t count);
    Step TakeEvents(bool active, std::int64_t count);
    Step TakeLasting(bool active, std::int64_t count);
    Step TakeEnding(bool active, std::int64_t count);

    std::array<std::vector<Lane>, kSimTriggerPages> lanes_;  ///< those that a page looks at
    std::array<SimRun, kSimPods> now_{};
    SimTriggerSetup setup_;
    int page_ = kLastTriggerPage;
    bool ready_ = false;  ///< an inactive sample was seen
    int eventsToGo_ = 1;
    std::int64_t lasted_ = 0;  ///< samples of the active state that began with an event
};

}  // namespace zu
