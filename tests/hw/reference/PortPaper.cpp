#include "reference/PortPaper.h"

#include <cstdio>

namespace zu::reference {
namespace {

int WithOffset(int port) {
    return ((port & 15) + (port >> 6) + 32) & 0xFF;
}

int WithOffsetOrLiteral(int port) {
    return (port & 0xC0) != 0 ? port & 0xFF : WithOffset(port);
}

int WithoutOffset(int port) {
    return ((port >> 6) & 0x30) | (port & 15);
}

std::string Format(const char* word, int first, const char* format, int second) {
    char text[48];
    std::snprintf(text, sizeof text, "%s %04x", word, static_cast<unsigned>(first));
    std::string line = text;
    std::snprintf(text, sizeof text, format, second);
    return line + text + "\n";
}

}  // namespace

void PortPaper::Record(int command, int port, int count, int data) {
    Text += "IOCTL 9538240f :";
    for (const int field : {command, port, count, 0, 0, data}) {
        for (int byte = 0; byte < 4; ++byte) {
            char text[8];
            std::snprintf(text, sizeof text, " %02x", static_cast<unsigned>(field >> (8 * byte) & 0xFF));
            Text += text;
        }
    }
    Text += "\n";
}

void PortPaper::Out(int port, int value) {
    if (driver_) {
        Record(13, port, 1, value & 0xFF);
    } else {
        Text += Format("OUT", port, " %02x", value & 0xFF);
    }
}

void PortPaper::OutAll(int port, const std::vector<int>& values) {
    for (const int value : values) Out(port, value);
}

void PortPaper::In(int port) {
    if (driver_) {
        Record(10, port, 1, 0);  // as it is sent
    } else {
        Text += Format("IN", port, " %02x", Answer);
    }
}

void PortPaper::InString(int port, int unit, int count) {
    if (driver_) {
        Record(unit == 1 ? 20 : unit == 2 ? 21 : 22, port, count, 0);
    } else {
        const std::string word = "INS" + std::to_string(unit);
        Text += Format(word.c_str(), port, " %d", count);  // the port leaves a remainder unread
    }
}

void PortCable::Twice(int port, const std::vector<int>& values) {
    for (const int value : values) {
        Paper.Out(port, value);
        if (!driver_) Paper.Out(port, value);
    }
}

void PortCable::ByteWrite(int port, int value) {
    Twice(base_, {WithOffsetOrLiteral(port)});
    Twice(base_ + 2, {0xC5, 0xCD, 0xC5});
    Twice(base_, {value});
    Twice(base_ + 2, {0xC7, 0xC5});
}

void PortCable::ByteRead(int port) {
    Twice(base_, {WithOffset(port)});
    Twice(base_ + 2, {0xC5, 0xCD, 0xC5});
    Twice(base_ + 2, {0xE4, 0xE6});
    Paper.In(base_);
    if (!driver_) Paper.In(base_);
    Twice(base_ + 2, {0xC5});
}

void PortCable::ByteBlock(int port, int count) {
    Paper.Out(base_, WithOffset(port));
    Paper.OutAll(base_ + 2, {0xCD, 0xC5});
    for (int i = 0; i < count; ++i) {
        Paper.In(base_);
        Paper.OutAll(base_ + 2, {0xE4, 0xE6});
    }
    Paper.Out(base_ + 2, 0xC5);
}

void PortCable::DriverFrame(bool opening) {
    if (!driver_) return;
    Paper.OutAll(base_ + 2,
                 opening ? std::vector<int>{0x04, 0x0F, 0x00} : std::vector<int>{0x00, 0x0B, 0x00});
}

void PortCable::EppBlock(int port, int count) {
    const int unit = mode_ == 4 ? 1 : mode_ == 32 ? 2 : 4;
    if (driver_) {
        DriverFrame(true);
        Paper.Out(base_ + 3, WithoutOffset(port));
        Paper.InString(base_ + 4, unit, count);
        DriverFrame(false);
    } else if (mode_ == 4) {
        Paper.Out(base_ + 3, WithOffset(port));
        for (int i = 0; i < count; ++i) Paper.In(base_ + 4);
    } else {
        Paper.OutAll(base_ + 2, {0x04, 0x0F, 0x00});
        Paper.Out(base_ + 3, (port & 0x3F) | ((port >> 6) & 0x30));
        Paper.InString(base_ + 4, unit, count);
        Paper.OutAll(base_ + 2, {0x00, 0x0B, 0x00});
    }
}

void PortCable::Write(int port, int value) {
    if (mode_ == 8) {
        Paper.Out(port, value);
    } else if (mode_ == 1 || mode_ == 2) {
        ByteWrite(port, value);
    } else {
        DriverFrame(true);
        Paper.Out(base_ + 3, driver_ ? WithoutOffset(port) : WithOffsetOrLiteral(port));
        Paper.Out(base_ + 4, value);
        DriverFrame(false);
    }
}

void PortCable::Read(int port) {
    if (mode_ == 8) {
        Paper.In(port);
    } else if (mode_ == 1 || mode_ == 2) {
        ByteRead(port);
    } else {
        DriverFrame(true);
        Paper.Out(base_ + 3, driver_ ? WithoutOffset(port) : WithOffset(port));
        Paper.In(base_ + 4);
        DriverFrame(false);
    }
}

void PortCable::ReadBlock(int port, int count) {
    if (mode_ == 8) {
        Paper.InString(port, 1, count);
    } else if (mode_ == 1 || mode_ == 2) {
        ByteBlock(port, count);
    } else {
        EppBlock(port, count);
    }
}

}  // namespace zu::reference
