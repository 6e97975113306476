// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/view_painter.h"

#include <QPainterPath>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "hosts/desktop/drawing/qt_values.h"
#include "platform/ui/button.h"

namespace hosts::desktop {
namespace {

QRectF bounds(const platform::UIView& view) {
    return {0, 0, view.frame().width, view.frame().height};
}

const platform::UIImage* imageIn(const platform::UIView& view) {
    if (auto* picture = dynamic_cast<const platform::UIImageView*>(&view)) return picture->image.get();
    auto* button = dynamic_cast<const platform::UIButton*>(&view);
    return button ? button->imageForState(platform::UIControlStateNormal).get() : nullptr;
}

Qt::Alignment alignmentOf(platform::NSTextAlignment alignment) {
    switch (alignment) {
        case platform::NSTextAlignment::center:
            return Qt::AlignHCenter;
        case platform::NSTextAlignment::right:
            return Qt::AlignRight;
        case platform::NSTextAlignment::left:
            break;
    }
    return Qt::AlignLeft;
}

QString withLineSeparators(const std::string& text) {
    return QString::fromStdString(text).replace(u'\n', QChar::LineSeparator);
}

QList<QTextLayout::FormatRange> formatsOf(const platform::NSAttributedString& runs) {
    QList<QTextLayout::FormatRange> formats;
    int start = 0;
    for (const platform::TextRun& run : runs) {
        QTextLayout::FormatRange range;
        range.start = start;
        range.length = static_cast<int>(QString::fromStdString(run.text).size());
        range.format.setFont(fontOf(run.font));
        start += range.length;
        formats.append(range);
    }
    return formats;
}

// A label's text broken into the lines that it shows: at most as many as the label allows, aligned
// within its frame and centred from top to bottom. What does not fit ends in an ellipsis.
class LabelLayout {
public:
    explicit LabelLayout(const platform::UILabel& label);

    // `offset` is from the label's own origin.
    void draw(QPainter& painter, QPointF offset, const QColor& colour);

private:
    void breakLines(int most);
    void elideLastLine(const QTextLine& last);
    double textHeight() const;

    const platform::UILabel& _label;
    QTextLayout _text;
    int _lines = 0;
    // The last line's text when it had to be cut.
    QString _elided;
};

LabelLayout::LabelLayout(const platform::UILabel& label)
    : _label(label), _text(withLineSeparators(label.text().value_or(std::string())), fontOf(label.font)) {
    QTextOption option(alignmentOf(label.textAlignment));
    option.setWrapMode(label.numberOfLines == 1 ? QTextOption::NoWrap : QTextOption::WordWrap);
    _text.setTextOption(option);
    _text.setFormats(formatsOf(label.attributedText()));
    breakLines(label.numberOfLines > 0 ? label.numberOfLines : std::numeric_limits<int>::max());
}

void LabelLayout::breakLines(int most) {
    double top = 0;
    _text.beginLayout();
    for (_lines = 0; _lines < most; ++_lines) {
        QTextLine line = _text.createLine();
        if (!line.isValid()) break;
        line.setLineWidth(_label.frame().width);
        line.setPosition({0, top});
        top += line.height();
    }
    _text.endLayout();
    if (_lines > 0) elideLastLine(_text.lineAt(_lines - 1));
}

// Text that wraps by words just ends with its last line; other text says that it was cut.
void LabelLayout::elideLastLine(const QTextLine& last) {
    if (_label.numberOfLines != 1 && _label.lineBreakMode == platform::NSLineBreakMode::byWordWrapping) return;
    const QString rest = _text.text().mid(last.textStart());
    const bool isWhole = last.textLength() >= rest.size();
    if (isWhole && last.naturalTextWidth() <= _label.frame().width) return;
    const QString paragraph = rest.section(QChar::LineSeparator, 0, 0);
    const QString ellipsis = paragraph.size() < rest.size() ? QStringLiteral("…") : QString();
    const auto& formats = _text.formats();
    const QFont font = formats.isEmpty() ? _text.font() : formats.constFirst().format.font();
    _elided = QFontMetricsF(font).elidedText(paragraph + ellipsis, Qt::ElideRight, _label.frame().width);
}

double LabelLayout::textHeight() const {
    if (_lines == 0) return 0;
    const QTextLine last = _text.lineAt(_lines - 1);
    return last.y() + last.height();
}

void LabelLayout::draw(QPainter& painter, QPointF offset, const QColor& colour) {
    painter.setPen(colour);
    const QPointF origin = offset + QPointF(0, (_label.frame().height - textHeight()) / 2);
    for (int i = 0; i < _lines; ++i) {
        const QTextLine line = _text.lineAt(i);
        const bool isCut = !_elided.isEmpty() && i == _lines - 1;
        if (!isCut) {
            line.draw(&painter, origin);
            continue;
        }
        const auto& formats = _text.formats();
        painter.setFont(formats.isEmpty() ? _text.font() : formats.constFirst().format.font());
        painter.drawText(origin + QPointF(0, line.y() + line.ascent()), _elided);
    }
}

}  // namespace

void ViewPainter::paint(const platform::UIView& view) {
    _painter.save();
    if (view.clipsToBounds() && view.cornerRadius() == 0) _painter.setClipRect(bounds(view), Qt::IntersectClip);
    paintContents(view);
    for (const auto& part : view.subviews()) {
        _painter.save();
        _painter.translate(part->frame().x, part->frame().y);
        paint(*part);
        _painter.restore();
    }
    _painter.restore();
}

void ViewPainter::paintContents(const platform::UIView& view) {
    if (auto* label = dynamic_cast<const platform::UILabel*>(&view)) return paintLabel(*label);
    paintImage(imageIn(view), view);
}

// A picture with round corners is painted as a brush: unlike a clip, that leaves a smooth edge.
void ViewPainter::paintImage(const platform::UIImage* image, const platform::UIView& view) {
    if (!image || view.frame().width <= 0 || view.frame().height <= 0) return;
    QImage picture = decoded(*image);
    if (picture.isNull()) return;
    picture.setDevicePixelRatio(1);
    const QRectF target = onPixels(bounds(view));
    if (view.cornerRadius() <= 0) {
        _painter.drawImage(target, picture);
        return;
    }
    QBrush brush(picture);
    brush.setTransform(QTransform::fromTranslate(target.x(), target.y())
                           .scale(target.width() / picture.width(), target.height() / picture.height()));
    _painter.setPen(Qt::NoPen);
    _painter.setBrush(brush);
    _painter.drawRoundedRect(target, view.cornerRadius(), view.cornerRadius());
}

void ViewPainter::paintLabel(const platform::UILabel& label) {
    LabelLayout layout(label);
    if (label.shadowColor) {
        const QPointF offset(label.shadowOffset.width, label.shadowOffset.height);
        layout.draw(_painter, offset, shown(*label.shadowColor));
    }
    layout.draw(_painter, {}, shown(label.textColor));
}

// The platform lays out for the phone's pixels; this screen may have others.
QRectF ViewPainter::onPixels(const QRectF& rect) const {
    const QTransform& place = _painter.deviceTransform();
    if (place.type() > QTransform::TxScale) return rect;
    const QRectF device = place.mapRect(rect);
    const QPointF topLeft(std::round(device.left()), std::round(device.top()));
    const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
    return place.inverted().mapRect(QRectF(topLeft, bottomRight));
}

QColor ViewPainter::shown(const platform::UIColor& colour) const {
    const QColor given = QColor::fromRgbF(static_cast<float>(colour.red), static_cast<float>(colour.green),
                                          static_cast<float>(colour.blue), static_cast<float>(colour.alpha));
    if (!_dark) return given;
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    float alpha = 0;
    given.getHslF(&hue, &saturation, &lightness, &alpha);
    return QColor::fromHslF(std::max(hue, 0.0F), saturation, 1 - lightness, alpha);
}

}  // namespace hosts::desktop
