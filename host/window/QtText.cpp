#include "host/window/QtText.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QTextLayout>

#include <cmath>
#include <mutex>

namespace host {

namespace {
std::mutex fontMutex;
QString systemFamily;
}  // namespace

QString qtString(const NSString &text) {
    const auto bytes = text.view();
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

NSString toolkitString(const QString &text) {
    const QByteArray bytes = text.toUtf8();
    return NSString(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

QString inOwnDirection(const QString &text) {
    constexpr QChar kLeftToRightMark(0x200E);
    if (QGuiApplication::layoutDirection() != Qt::RightToLeft)
        return text;
    QStringList lines = text.split(u'\n');
    for (QString &line : lines)
        if (!line.isEmpty() && !line.isRightToLeft())
            line = kLeftToRightMark + line + kLeftToRightMark;
    return lines.join(u'\n');
}

void setSystemFontFamily(const QString &family) {
    const std::scoped_lock lock(fontMutex);
    systemFamily = family;
}

QFont qtFont(const std::shared_ptr<NSFont> &font) {
    QFont result;
    QStringList families;
    if (font && !font->fontName().isEmpty())
        families << qtString(font->fontName());
    {
        const std::scoped_lock lock(fontMutex);
        if (!systemFamily.isEmpty())
            families << systemFamily;
    }
    if (!families.isEmpty())
        result.setFamilies(families);
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(font ? font->pointSize() : NSFont::kSystemFontSize))));
    result.setBold(font && font->isBold());
    return result;
}

NSSize QtTextMeasurer::boundingRect(const NSString &text, const std::shared_ptr<NSFont> &font, double width) const {
    const QFont face = qtFont(font);
    const QFontMetricsF metrics(face);
    const double line = std::ceil(metrics.height());
    if (text.isEmpty())
        return {0, line};
    QString whole = qtString(text);
    if (width <= 0 && !whole.contains(u'\n'))
        return {std::ceil(metrics.horizontalAdvance(whole)), line};
    whole.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(whole, face);
    layout.beginLayout();
    NSSize size;
    for (QTextLine next = layout.createLine(); next.isValid(); next = layout.createLine()) {
        next.setLineWidth(width > 0 ? width : 1e6);
        size.width = std::max(size.width, next.naturalTextWidth());
        size.height += line;
    }
    layout.endLayout();
    return {std::ceil(size.width), size.height};
}

}  // namespace host
