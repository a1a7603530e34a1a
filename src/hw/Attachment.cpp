#include "hw/Attachment.h"

#include "hw/sim/SimScenes.h"

namespace zu {

Attachment::Attachment(std::string_view simulate) {
    if (simulate.empty()) {
        machine_ = std::make_unique<LinuxSeams>();
    } else if (const auto spec = ParseSimulate(simulate)) {
        simulation_ = std::make_unique<SimAttachment>(*spec);
        simulation_->Instrument().SetRealTime(true);
        simulation_->Instrument().Connect(MakeSimScene(kSimScenes.front().Name));
    }
}

void Attachment::AttachTo(HardwareSession& hardware) {
    if (machine_ != nullptr) hardware.Seams = machine_->Seams();
    if (simulation_ != nullptr) hardware.Seams = simulation_->Seams();
}

SimInstrument* Attachment::Simulated() {
    return simulation_ != nullptr ? &simulation_->Instrument() : nullptr;
}

}  // namespace zu
