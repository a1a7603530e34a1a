#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zu::reference {

/// What register accesses put on the USB cable, in the lines of a USB trace.
class UsbPaper {
  public:
    std::string Text;
    std::function<int(int command)> Answer;  ///< the device's answer to a read; 0 without one

    std::vector<std::uint8_t> BulkBytes;  ///< what bulk writes carried

    /// The instrument is the device of this number.
    void Found(int number);
    void Write(int port, int value);
    int Read(int port);
    /// The device gives 5A throughout.
    std::vector<std::uint8_t> ReadBlock(int port, int count);
    void Flush();
    /// Chooses the register of the next transfer.
    void Select(int port);
    void BulkOut(const std::vector<int>& bytes);
    void Command(int command, const std::vector<int>& data);
    void CommandWithIndex(int command, int index, const std::vector<int>& data);
    int ReadCommand(int command);

  private:
    void Bulk(int direction, int length);

    std::vector<int> queue_;
    int index_ = 0;  ///< of the last command that set it; all later ones carry it along
};

}  // namespace zu::reference
