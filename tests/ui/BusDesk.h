#pragma once

#include <algorithm>
#include <vector>

#include <QMouseEvent>
#include <QTest>

#include "serial/BusState.h"
#include "ui/Desk.h"

namespace zu::test {

inline constexpr int kListRow = 12 + 4;        ///< pixels of a row of the lists on the test's screen of 1000
inline constexpr std::int32_t kBusStart = 42;  ///< sample of the I2C start

/// A desk with an I2C transfer on channels 0 and 1 and three SPI bytes on channels 8 to 11, as groups 0
/// and 1.
class BusDesk : public StartedDesk {
  public:
    explicit BusDesk(std::vector<std::string> arguments = {"--model=15"})
        : StartedDesk(std::move(arguments)) {
        I2cWave i2c;
        i2c.Hold(true, true, 40);
        i2c.Start();
        i2c.Byte(0xA0, true);
        i2c.Byte(0x10, true);
        i2c.Byte(0x5A, false);
        i2c.Stop();
        Draw(0, i2c.Scl);
        Draw(1, i2c.Sda);
        SpiWave spi;
        for (int i = 0; i < 30; ++i) spi.Idle();
        spi.Select();
        for (const unsigned value : {0x03U, 0x9FU, 0xA5U}) spi.Byte(value, ~value & 0xFFU);
        spi.Idle();
        Draw(8, spi.Clock);
        Draw(9, spi.Si);
        Draw(10, spi.So);
        Draw(11, spi.Cs);
        State().Serial.SerialMode = 1;
        State().Serial.SerialGroup = 0;
        SetGroup(0, 1, "EEPROM", {0, 1});
        SetGroup(1, 3, "FLASH", {8, 9, 10, 11});
        // Out of the way of what is listed.
        std::fill_n(State().Cursors.Cur.begin(), kCursorSlots, 5000);
    }

    void SetGroup(std::size_t number, std::int8_t mode, const char* name,
                  std::initializer_list<std::int32_t> channels) {
        GroupRecord& group = State().Groups[number];
        group.Mode = mode;
        group.Name = name;
        group.Size = static_cast<std::int32_t>(channels.size());
        std::copy(channels.begin(), channels.end(), group.Channels.begin());
    }
    /// Levels of a channel; what lies behind them holds the last one.
    void Draw(int channel, const std::vector<std::uint8_t>& levels) {
        std::uint8_t* pod = State().Buffer.Pod[static_cast<std::size_t>(channel / 8)];
        const auto mask = static_cast<std::uint8_t>(1U << (static_cast<unsigned>(channel) % 8U));
        for (std::int32_t i = 0; i < State().Memory.BufferLen; ++i) {
            const auto at = std::min(static_cast<std::size_t>(i), levels.size() - 1);
            pod[i] = static_cast<std::uint8_t>(levels[at] != 0 ? pod[i] | mask : pod[i] & ~mask);
        }
    }
    /// A place on a row of a list, 0 the first below the header.
    static QPoint OnRow(int row) { return {20, (row + 1) * kListRow + kListRow / 2}; }
    static void Move(QWidget& area, const QPoint& at, Qt::MouseButtons buttons) {
        QMouseEvent move(QEvent::MouseMove, QPointF(at), area.mapToGlobal(QPointF(at)), Qt::NoButton, buttons,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&area, &move);
    }
};

}  // namespace zu::test
