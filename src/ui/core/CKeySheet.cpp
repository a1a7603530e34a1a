#include "ui/core/CKeySheet.h"

#include <array>
#include <string_view>

#include <QDialogButtonBox>
#include <QKeySequence>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "core/Commands.h"
#include "ui/QtText.h"

namespace zu {
namespace {

struct ViewKey {
    std::string_view Keys;
    std::string_view Effect;
};

constexpr std::array kTimingKeys{
    ViewKey{"Left, Right", "One sample back or on"},
    ViewKey{"Page Up, Page Down, Ctrl+Left, Ctrl+Right", "A quarter of the window back or on"},
    ViewKey{"Home, End", "To the left by the window's height in samples; to the end of the memory"},
    ViewKey{"Up, Down", "One line up or down"},
    ViewKey{"Ctrl+Page Up, Ctrl+Page Down", "Half of the lines that fit up or down"},
    ViewKey{"Ctrl+Home, Ctrl+End", "Up by the window's height; to the last line"},
    ViewKey{"Tab, Shift+Tab", "Next or previous edge of the line under the pointer"},
};

constexpr std::array kTimingMouse{
    ViewKey{"Wheel", "Three lines up or down"},
    ViewKey{"Shift+wheel, middle drag", "Move along the samples"},
    ViewKey{"Ctrl+wheel, pinch", "Zoom at the pointer"},
    ViewKey{"Ctrl+click, Shift+click", "Zoom in or out at the pointer"},
    ViewKey{"A, B, C, D or T held and click", "Put that cursor at the pointer"},
    ViewKey{"Drag a cursor", "Move it; with 2, 3, 4 or 5 held move A and B, A to C, A to D, A to T"},
    ViewKey{"Drop a cursor", "Within 6 pixels of an edge it snaps to the edge; not with Alt held"},
    ViewKey{"Rest on a trace", "Width, period, frequency and duty of the pulse, or the value of the group"},
    ViewKey{"Drag the box or a tick in the overview", "Move along the whole capture; move that cursor"},
    ViewKey{"Click on + or - above trigger words", "Next or previous level of the sequence"},
    ViewKey{"Drag a number or name", "Move the line"},
    ViewKey{"Double click on a number or name", "Edit the channel or group"},
    ViewKey{"Right click", "Display options; on a cursor its menu"},
};

constexpr std::array kStateListKeys{
    ViewKey{"Up, Down", "One row up or down"},
    ViewKey{"Page Up, Page Down", "As many rows as the window shows up or down"},
    ViewKey{"Home, End", "Ten rows up or down"},
    ViewKey{"Left, Right", "One column back or on"},
    ViewKey{"Ctrl+Page Up, Ctrl+Page Down", "As many columns as the window shows back or on"},
    ViewKey{"Ctrl+Home, Ctrl+End", "To the first or last column"},
    ViewKey{"Ctrl+C", "Copy the selected rows, or those on the screen, as text"},
    ViewKey{"Esc", "Select nothing"},
    ViewKey{"Wheel, Shift+wheel", "Three rows up or down; one column back or on"},
    ViewKey{"A, B, C, D or T held and click", "Put that cursor on the row"},
    ViewKey{"Drag the row of a cursor",
            "Move it; with 2, 3, 4 or 5 held move A and B, A to C, A to D, A to T"},
    ViewKey{"Drag over rows, Shift+click", "Select rows"},
    ViewKey{"Rest on a row", "Sample, time and distance to the cursors"},
    ViewKey{"Click on a group's name", "Setup of the column"},
    ViewKey{"Right click", "Menu of the cursors"},
};

constexpr std::array kTrafficKeys{
    ViewKey{"Up, Down", "One row up or down"},
    ViewKey{"Page Up, Page Down", "As many rows as the window shows up or down"},
    ViewKey{"Home, End", "To the first event; to the last"},
    ViewKey{"F3, Shift+F3", "Serial window: next or previous event of the kind chosen above the list"},
    ViewKey{"Tab, Shift+Tab", "From the list to the tools above it and back"},
    ViewKey{"Ctrl+C", "Copy the selected rows, or those on the screen, as text"},
    ViewKey{"Esc", "Select nothing"},
    ViewKey{"Click on a row", "Show that moment in the Timing window and in the Statelist"},
    ViewKey{"A, B, C, D or T held and click", "Put that cursor on the row"},
    ViewKey{"Drag over rows, Shift+click", "Select rows"},
    ViewKey{"Rest on a row", "Sample, time and distance to the cursors"},
    ViewKey{"Right click", "Bring a window or a cursor to the row"},
};

constexpr std::array kDialogKeys{
    ViewKey{"Enter, Ins in the channel list", "Group setup: append and go on to the next channel; insert"},
    ViewKey{"Del, Ctrl+Up, Ctrl+Down in the group list", "Group setup: take channels out, move them"},
    ViewKey{"Enter, Ins in the list of channels", "Timing setup: append lines, insert lines"},
    ViewKey{"Enter in the list of groups or styles", "Timing setup: insert groups, set the style"},
    ViewKey{"Del, Ctrl+Up, Ctrl+Down in the display list", "Timing setup: take lines off, move them"},
    ViewKey{"Up, Down, Page Up, Page Down in a name", "Channel names: the next name, the next pod"},
    ViewKey{"+, -", "Display options: zoom in and out"},
};

template <std::size_t Count>
KeyChapter Chapter(const char* title, const std::array<ViewKey, Count>& rows) {
    KeyChapter chapter{QString::fromLatin1(title), {}};
    for (const ViewKey& row : rows) chapter.Lines.append({FromState(row.Keys), FromState(row.Effect)});
    return chapter;
}

KeyChapter CommandKeys() {
    KeyChapter chapter{QStringLiteral("Commands"), {}};
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const auto id = static_cast<CommandId>(i);
        const CommandTraits& traits = Traits(id);
        if (traits.Key.empty() || !IsOffered(id)) continue;
        const QKeySequence key(FromState(traits.Key));
        chapter.Lines.append({key.toString(QKeySequence::NativeText), FromState(traits.Hint)});
    }
    return chapter;
}

QString ToHtml(const QList<KeyChapter>& chapters) {
    QString html;
    for (const KeyChapter& chapter : chapters) {
        html += QStringLiteral("<h3>%1</h3><table cellspacing=\"0\" cellpadding=\"3\">").arg(chapter.Title);
        for (const auto& [keys, effect] : chapter.Lines) {
            html += QStringLiteral("<tr><td style=\"padding-right:16px\"><b>%1</b></td><td>%2</td></tr>")
                        .arg(keys.toHtmlEscaped(), effect.toHtmlEscaped());
        }
        html += QStringLiteral("</table>");
    }
    return html;
}

}  // namespace

QList<KeyChapter> KeySheet() {
    return {CommandKeys(),
            Chapter("Timing window: keys", kTimingKeys),
            Chapter("Timing window: mouse", kTimingMouse),
            Chapter("Statelist", kStateListKeys),
            Chapter("Serial and SPI window", kTrafficKeys),
            Chapter("Dialogs", kDialogKeys)};
}

CKeySheet::CKeySheet(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Keyboard"));
    auto* sheet = new QTextBrowser(this);
    sheet->setHtml(ToHtml(KeySheet()));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sheet);
    layout->addWidget(buttons);
    resize(720, 620);
}

}  // namespace zu
