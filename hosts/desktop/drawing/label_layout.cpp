// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/label_layout.h"

#include <algorithm>
#include <limits>

#include "hosts/desktop/drawing/fonts.h"

namespace hosts::desktop {
namespace {

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

}  // namespace

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

}  // namespace hosts::desktop
