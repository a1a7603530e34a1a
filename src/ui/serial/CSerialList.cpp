#include "ui/serial/CSerialList.h"

#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"

namespace zu {

CSerialList::CSerialList(CZuView& controller)
    : CTrafficList(controller), view_(controller.State(), *this, controller.TheApp().Host, FontMetrics()) {
    setObjectName(QStringLiteral("SerialList"));
    setWindowTitle(QStringLiteral("I2C View"));
}

SerialResult CSerialList::PaintList(ImageCanvas& canvas) {
    return view_.Paint(canvas);
}

}  // namespace zu
