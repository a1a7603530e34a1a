#!/usr/bin/env python3
"""Writes examples/bus.zu: a counter, an I2C EEPROM and an SPI flash memory on one 40-channel instrument.

    examples/make_bus.py > examples/bus.zu
"""
import sys

SAMPLES = 8192  # small memory of the 40-channel board, 10 million samples a second
I2C_QUARTER = 6  # samples; about 400 kHz
SPI_HALF = 5  # samples; 1 MHz


class Lines:
    """Levels of one pod over time."""

    def __init__(self, level):
        self.level = level
        self.bytes = bytearray()

    def set(self, bit, value):
        self.level = self.level | 1 << bit if value else self.level & ~(1 << bit)

    def hold(self, samples):
        self.bytes += bytes([self.level]) * samples

    def filled(self):
        self.hold(SAMPLES - len(self.bytes))
        return bytes(self.bytes[:SAMPLES])


def counter():
    return bytes(i // 16 & 0xFF for i in range(SAMPLES))


def i2c_start(pod):
    for clock, data in ((pod.level & 1, 1), (1, 1), (1, 0), (0, 0)):
        pod.set(1, data)
        pod.set(0, clock)
        pod.hold(I2C_QUARTER)


def i2c_stop(pod):
    for clock, data in ((0, 0), (1, 0), (1, 1)):
        pod.set(1, data)
        pod.set(0, clock)
        pod.hold(I2C_QUARTER)


def i2c_byte(pod, value, acknowledged=True):
    for bit in [*(value >> i & 1 for i in range(7, -1, -1)), not acknowledged]:
        pod.set(1, bit)
        for clock in (0, 1, 1, 0):
            pod.set(0, clock)
            pod.hold(I2C_QUARTER)


def i2c():
    """Write "zu" to address 10, then read it back."""
    pod = Lines(0b11)
    pod.hold(400)
    i2c_start(pod)
    for value in (0xA0, 0x10, ord("z"), ord("u")):
        i2c_byte(pod, value)
    i2c_stop(pod)
    pod.hold(900)
    i2c_start(pod)
    i2c_byte(pod, 0xA0)
    i2c_byte(pod, 0x10)
    i2c_start(pod)
    i2c_byte(pod, 0xA1)
    i2c_byte(pod, ord("z"))
    i2c_byte(pod, ord("u"), acknowledged=False)
    i2c_stop(pod)
    return pod.filled()


def spi_byte(pod, si, so):
    for bit in range(7, -1, -1):
        pod.set(1, si >> bit & 1)
        pod.set(2, so >> bit & 1)
        pod.set(0, 0)
        pod.hold(SPI_HALF)
        pod.set(0, 1)
        pod.hold(SPI_HALF)
    pod.set(0, 0)


def spi():
    """Command 03, a 24-bit address, eight bytes."""
    pod = Lines(0b1000)
    for address in (0x000100, 0x000108):
        pod.hold(600)
        pod.set(3, 0)
        pod.hold(20)
        for value in (0x03, *address.to_bytes(3, "big")):
            spi_byte(pod, value, 0xFF)
        for i in range(8):
            spi_byte(pod, 0x00, (address + i) * 37 & 0xFF)
        pod.hold(20)
        pod.set(3, 1)
    return pod.filled()


NAMES = {**{i: f"CNT{i}" for i in range(8)}, 8: "SCL", 9: "SDA", 16: "SCK", 17: "SI", 18: "SO", 19: "CS#"}
GROUPS = [("count", 0, range(8), "0,0,160"), ("EEPROM", 1, (8, 9), "0,110,0"), ("FLASH", 3, (16, 17, 18, 19), "150,0,0")]
# Sources of the display lines: groups are 160 and on, 190 is a spacer.
LINES = [160, *range(8), 190, 161, 8, 9, 190, 16, 17, 18, 19]
COLORS = {8: "0,110,0", 9: "0,150,60", 16: "150,0,0", 17: "190,60,0", 18: "200,110,0", 19: "110,0,60"}


def settings():
    yield "[File]"
    yield "FileVersion=192"
    yield "[TimingWin]"
    yield from ("ZoomOrigin=-1", "DataPos=380", "Grid=1", "TimingDispInfoType=2", "TimingDisp0=2,0,0", "TimingDisp1=4,0,0")
    yield from (f"TimingDisp{i}=0,0,0" for i in range(2, 8))
    yield from ("Stat=1", "ChPos=0")
    yield from (f"Color{channel}={COLORS.get(channel, '0,0,160')}" for channel in range(40))
    yield f"TimingLines={len(LINES)}"
    yield from (f"LSE{i}={source},{0 if source == 160 else 5},0" for i, source in enumerate(LINES))
    yield from ("[Cursor DLG]", "mode=1", "[Cursor]", "Cur0=412", "Cur1=1320", "Cur2=620", "Cur3=640", "Cur4=400", "Cur5=0")
    yield from ("[StateWin]", "DataPos=405", "[SerialWin]", "Mode=1", "Group=1")
    yield from ("[Clock]", "RateStg=10 MSa (100 ns)", "Type=0", "Edge=0")
    for number, (name, mode, channels, color) in enumerate(GROUPS):
        yield f"[Group{number}]"
        yield from (f"M={mode}", f"N={name}", f"S={len(channels)}")
        yield "L=" + "".join(f"{channel}," for channel in channels)
        yield from (f"Color{number}={color}", "B=0", "A=0", "T=0")
    yield from ("[Group]", f"TotGroups={len(GROUPS)}", "[ChannelData]")
    yield from (f"N{channel}={name}" for channel, name in NAMES.items())
    yield from ("[Screen]", "Zoom=-2", "[Hardware]", "Type=13", "Mode=0", "Mux=0")


def main():
    out = sys.stdout.buffer
    for line in settings():
        out.write((("\r\n" if line.startswith("[") else "") + line + "\r\n").encode("latin-1"))
    out.write(b"\r\n[Comment made by examples/make_bus.py]")
    out.write(b"\r\n[Model Roach40LB-128K 0 0]")
    for pod, samples in enumerate((counter(), i2c(), spi())):
        out.write(f"\r\n[Data D{pod} 0 {len(samples)}]\r\n".encode("latin-1") + samples)
    out.write(b"\r\n[Settings]\r\n")


if __name__ == "__main__":
    main()
