#include "hw/linux/LinuxUsb.h"

#include <algorithm>
#include <libusb.h>
#include <vector>

namespace zu {
namespace {

constexpr unsigned kControlTimeoutMs = 1000;
constexpr unsigned kBulkTimeoutMs = 3000;
constexpr std::uint8_t kVendorIn = 0xC0;  // request types: vendor, to the device
constexpr std::uint8_t kVendorOut = 0x40;
constexpr std::uint8_t kOneByteRequest = 0x0C;
constexpr std::uint8_t kBlockRequest = 0x04;

/// The first interface with bulk endpoints, and its first ones.
struct BulkPipes {
    int Interface = -1;
    std::uint8_t In = 0;
    std::uint8_t Out = 0;
};

void NotePipes(const libusb_interface_descriptor& descriptor, BulkPipes& pipes) {
    for (int e = 0; e < descriptor.bNumEndpoints; ++e) {
        const libusb_endpoint_descriptor& endpoint = descriptor.endpoint[e];
        if ((endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK) != LIBUSB_TRANSFER_TYPE_BULK) continue;
        if (pipes.Interface >= 0 && pipes.Interface != descriptor.bInterfaceNumber) continue;
        pipes.Interface = descriptor.bInterfaceNumber;
        const bool in = (endpoint.bEndpointAddress & LIBUSB_ENDPOINT_DIR_MASK) != 0;
        std::uint8_t& pipe = in ? pipes.In : pipes.Out;
        if (pipe == 0) pipe = endpoint.bEndpointAddress;
    }
}

/// The library takes no const data, and writes to none that goes out.
std::uint8_t* Unwritten(std::span<const std::uint8_t> data) {
    return const_cast<std::uint8_t*>(data.data());
}

BulkPipes FindPipes(libusb_device* device) {
    BulkPipes pipes;
    libusb_config_descriptor* config = nullptr;
    if (libusb_get_active_config_descriptor(device, &config) != 0) return pipes;
    for (int i = 0; i < config->bNumInterfaces; ++i) {
        if (config->interface[i].num_altsetting > 0) NotePipes(config->interface[i].altsetting[0], pipes);
    }
    libusb_free_config_descriptor(config);
    return pipes;
}

}  // namespace

struct LinuxUsb::Impl {
    libusb_context* Context = nullptr;
    libusb_device** List = nullptr;
    std::ptrdiff_t Count = 0;
    libusb_device_handle* Handle = nullptr;
    BulkPipes Pipes;
    bool Claimed = false;
    bool Gone = false;

    Impl() {
        if (libusb_init(&Context) != 0) Context = nullptr;
    }
    ~Impl() {
        Close();
        DropList();
        if (Context != nullptr) libusb_exit(Context);
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void DropList() {
        if (List != nullptr) libusb_free_device_list(List, 1);
        List = nullptr;
        Count = 0;
    }
    void ReadList() {
        DropList();
        Count = std::max<std::ptrdiff_t>(libusb_get_device_list(Context, &List), 0);
    }
    void Close() {
        if (Handle == nullptr) return;
        if (Claimed) libusb_release_interface(Handle, Pipes.Interface);
        libusb_close(Handle);
        Handle = nullptr;
        Claimed = false;
    }
    bool Usable() const { return Handle != nullptr && !Gone; }
    bool Claim() {
        if (!Usable() || Pipes.Interface < 0) return false;
        if (Claimed) return true;
        libusb_set_auto_detach_kernel_driver(Handle, 1);
        Claimed = libusb_claim_interface(Handle, Pipes.Interface) == 0;
        return Claimed;
    }
    /// A device that left or hangs is not asked again: each further transfer would wait for nothing.
    void NoteError(int error) {
        if (error == LIBUSB_ERROR_NO_DEVICE || error == LIBUSB_ERROR_TIMEOUT || error == LIBUSB_ERROR_IO) {
            Gone = true;
        }
    }
    bool Control(std::uint8_t direction, const UsbRegisterBlock& block, std::uint8_t* data) {
        if (!Usable()) return false;
        const auto length = static_cast<std::uint16_t>(block.Length);
        const std::uint8_t request = length == 1 ? kOneByteRequest : kBlockRequest;
        const int moved =
            libusb_control_transfer(Handle, direction, request, static_cast<std::uint16_t>(block.Offset),
                                    static_cast<std::uint16_t>(block.Index), data, length, kControlTimeoutMs);
        if (moved < 0) NoteError(moved);
        return moved == length;
    }
    std::int32_t Bulk(std::uint8_t pipe, std::uint8_t* data, std::size_t length) {
        if (pipe == 0 || !Claim()) return -1;
        int moved = 0;
        const int error =
            libusb_bulk_transfer(Handle, pipe, data, static_cast<int>(length), &moved, kBulkTimeoutMs);
        if (error != 0) NoteError(error);
        return error != 0 && moved == 0 ? -1 : moved;
    }
};

LinuxUsb::LinuxUsb() : impl_(std::make_unique<Impl>()) {}
LinuxUsb::~LinuxUsb() = default;

bool LinuxUsb::Open(int n) {
    Close();
    if (impl_->Context == nullptr || n < 0) return false;
    if (n == 0 || impl_->List == nullptr) impl_->ReadList();
    if (n >= impl_->Count || libusb_open(impl_->List[n], &impl_->Handle) != 0) {
        impl_->Handle = nullptr;
        return false;
    }
    impl_->Pipes = FindPipes(impl_->List[n]);
    impl_->Gone = false;
    return true;
}

void LinuxUsb::Close() {
    impl_->Close();
}

bool LinuxUsb::QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) {
    libusb_device_descriptor descriptor{};
    const std::size_t at = query == UsbIdQuery::Scan ? 0 : 8;
    if (!impl_->Usable() || bytes.size() < at + 4) return false;
    if (libusb_get_device_descriptor(libusb_get_device(impl_->Handle), &descriptor) != 0) return false;
    bytes[at] = static_cast<std::uint8_t>(descriptor.idVendor);
    bytes[at + 1] = static_cast<std::uint8_t>(descriptor.idVendor >> 8);
    bytes[at + 2] = static_cast<std::uint8_t>(descriptor.idProduct);
    bytes[at + 3] = static_cast<std::uint8_t>(descriptor.idProduct >> 8);
    return true;
}

bool LinuxUsb::RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) {
    const UsbRegisterBlock command = UsbRegisterBlock::Unpack(block);
    return command.Length <= data.size() && impl_->Control(kVendorIn, command, data.data());
}

bool LinuxUsb::RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) {
    const UsbRegisterBlock command = UsbRegisterBlock::Unpack(block);
    if (command.Length > data.size()) return false;
    return impl_->Control(kVendorOut, command, Unwritten(data));
}

std::int32_t LinuxUsb::BulkIn(std::span<std::uint8_t> data) {
    return impl_->Bulk(impl_->Pipes.In, data.data(), data.size());
}

std::int32_t LinuxUsb::BulkOut(std::span<const std::uint8_t> data) {
    return impl_->Bulk(impl_->Pipes.Out, Unwritten(data), data.size());
}

}  // namespace zu
