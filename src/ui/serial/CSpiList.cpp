#include "ui/serial/CSpiList.h"

#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"

namespace zu {

CSpiList::CSpiList(CZuView& controller)
    : CTrafficList(controller), view_(controller.State(), *this, controller.TheApp().Host, FontMetrics()) {
    setObjectName(QStringLiteral("SpiList"));
    setWindowTitle(QStringLiteral("SPI bus"));
}

SerialResult CSpiList::PaintList(ImageCanvas& canvas) {
    return view_.Paint(canvas);
}

}  // namespace zu
