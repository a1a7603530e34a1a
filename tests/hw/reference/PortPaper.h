#pragma once

#include <string>
#include <vector>

namespace zu::reference {

/// Port accesses in the lines of a trace: by the program's own instructions, or as the records of the driver.
class PortPaper {
  public:
    explicit PortPaper(bool driver) : driver_(driver) {}

    std::string Text;
    int Answer = 0;  ///< of every input

    void Out(int port, int value);
    void OutAll(int port, const std::vector<int>& values);
    void In(int port);
    /// String input in units of 1, 2 or 4 bytes.
    void InString(int port, int unit, int count);

  private:
    void Record(int command, int port, int count, int data);

    bool driver_;
};

/// The routines of one connection mode (1, 2, 4, 8, 32, 64): what a register access does to the ports.
class PortCable {
  public:
    PortCable(int mode, int base, bool driver) : Paper(driver), mode_(mode), base_(base), driver_(driver) {}

    PortPaper Paper;

    void Write(int port, int value);
    void Read(int port);
    void ReadBlock(int port, int count);

  private:
    void ByteWrite(int port, int value);
    void ByteRead(int port);
    void ByteBlock(int port, int count);
    void EppBlock(int port, int count);
    void DriverFrame(bool opening);
    void Twice(int port, const std::vector<int>& values);

    int mode_;
    int base_;
    bool driver_;
};

}  // namespace zu::reference
