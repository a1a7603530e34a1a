#include "hw/RegisterOps.h"

namespace zu {
namespace {

class NullOps final : public RegisterOps {
  public:
    void RegWrite(std::uint16_t, std::uint16_t, std::uint8_t) override {}
    std::uint8_t RegRead(std::uint16_t, std::uint16_t) override { return 0; }
    void RegReadBlock(std::uint16_t, std::uint16_t, std::int32_t, std::uint8_t*) override {}
};

}  // namespace

RegisterOps& NullRegisterOps() {
    static NullOps ops;
    return ops;
}

}  // namespace zu
