#include "host/window/KeyCodes.h"

#include "host/window/QtText.h"

namespace host {

namespace {

struct KeyCode {
    int key;
    std::uint16_t code;
};
constexpr KeyCode kKeyCodes[] = {
    {Qt::Key_A, 0},          {Qt::Key_S, 1},         {Qt::Key_D, 2},          {Qt::Key_F, 3},         {Qt::Key_H, 4},
    {Qt::Key_G, 5},          {Qt::Key_Z, 6},         {Qt::Key_X, 7},          {Qt::Key_C, 8},         {Qt::Key_V, 9},
    {Qt::Key_B, 11},         {Qt::Key_Q, 12},        {Qt::Key_W, 13},         {Qt::Key_E, 14},        {Qt::Key_R, 15},
    {Qt::Key_Y, 16},         {Qt::Key_T, 17},        {Qt::Key_1, 18},         {Qt::Key_2, 19},        {Qt::Key_3, 20},
    {Qt::Key_4, 21},         {Qt::Key_6, 22},        {Qt::Key_5, 23},         {Qt::Key_Equal, 24},    {Qt::Key_9, 25},
    {Qt::Key_7, 26},         {Qt::Key_Minus, 27},    {Qt::Key_8, 28},         {Qt::Key_0, 29},        {Qt::Key_BracketRight, 30},
    {Qt::Key_O, 31},         {Qt::Key_U, 32},        {Qt::Key_BracketLeft, 33}, {Qt::Key_I, 34},      {Qt::Key_P, 35},
    {Qt::Key_Return, 36},    {Qt::Key_L, 37},        {Qt::Key_J, 38},         {Qt::Key_Apostrophe, 39}, {Qt::Key_K, 40},
    {Qt::Key_Semicolon, 41}, {Qt::Key_Backslash, 42}, {Qt::Key_Comma, 43},    {Qt::Key_Slash, 44},    {Qt::Key_N, 45},
    {Qt::Key_M, 46},         {Qt::Key_Period, 47},   {Qt::Key_Tab, 48},       {Qt::Key_Backtab, 48},  {Qt::Key_Space, 49},
    {Qt::Key_QuoteLeft, 50}, {Qt::Key_Backspace, 51}, {Qt::Key_Escape, 53},   {Qt::Key_Enter, 76},    {Qt::Key_F5, 96},
    {Qt::Key_F2, 120},       {Qt::Key_Home, 115},    {Qt::Key_PageUp, 116},   {Qt::Key_Delete, 117},  {Qt::Key_End, 119},
    {Qt::Key_PageDown, 121}, {Qt::Key_Left, 123},    {Qt::Key_Right, 124},    {Qt::Key_Down, 125},    {Qt::Key_Up, 126},
};
constexpr std::uint16_t kNoHardwareKey = 0xFFFF;

// With Control down the text of a letter is a control character; views look for the letter.
QString charactersOf(const QKeyEvent &event) {
    const bool isLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    if (isLetter && (event.modifiers() & Qt::ControlModifier))
        return QString(QChar(u'a' + (event.key() - Qt::Key_A)));
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ? QStringLiteral("\r") : event.text();
}

NSEventType typeOf(const QKeyEvent &event) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
        return NSEventType::flagsChanged;
    default:
        return event.type() == QEvent::KeyRelease ? NSEventType::keyUp : NSEventType::keyDown;
    }
}

}  // namespace

std::optional<std::uint16_t> keyCodeOf(int qtKey) {
    for (const KeyCode &row : kKeyCodes)
        if (row.key == qtKey)
            return row.code;
    return std::nullopt;
}

NSEventModifierFlags modifiersOf(Qt::KeyboardModifiers modifiers) {
    NSEventModifierFlags flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= NSEventModifierFlagShift;
    if (modifiers & Qt::ControlModifier)
        flags |= NSEventModifierFlagCommand;
    if (modifiers & Qt::AltModifier)
        flags |= NSEventModifierFlagOption;
    if (modifiers & Qt::MetaModifier)
        flags |= NSEventModifierFlagControl;
    return flags;
}

std::shared_ptr<NSEvent> keyEventOf(const QKeyEvent &event) {
    const bool isBacktab = event.key() == Qt::Key_Backtab;
    return NSEvent::key(keyCodeOf(event.key()).value_or(kNoHardwareKey), toolkitString(charactersOf(event)),
                        modifiersOf(event.modifiers()) | (isBacktab ? NSEventModifierFlagShift : 0),
                        typeOf(event));
}

}  // namespace host
