// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/label_layout.h"

#include <limits>

#include "hosts/desktop/drawing/qt_values.h"

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

QList<QTextLayout::FormatRange> formatsOf(const platform::NSAttributedString& runs, double textScale) {
    QList<QTextLayout::FormatRange> formats;
    int start = 0;
    for (const platform::TextRun& run : runs) {
        QTextLayout::FormatRange range;
        range.start = start;
        range.length = static_cast<int>(QString::fromStdString(run.text).size());
        range.format.setFont(fontOf(run.font, textScale));
        start += range.length;
        formats.append(range);
    }
    return formats;
}

}  // namespace

LabelLayout::LabelLayout(const platform::UILabel& label, QSizeF size, double textScale, bool wraps)
    : _label(label),
      _size(size),
      _isFree(wraps || textScale > 1),
      _text(withLineSeparators(label.text().value_or(std::string())), fontOf(label.font, textScale)) {
    QTextOption option(alignmentOf(label.textAlignment));
    // The text's own, not the desktop's.
    option.setTextDirection(Qt::LayoutDirectionAuto);
    const bool staysOnOneLine = label.numberOfLines == 1 && !_isFree;
    option.setWrapMode(staysOnOneLine ? QTextOption::NoWrap
                       : _isFree      ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                      : QTextOption::WordWrap);
    _text.setTextOption(option);
    _text.setFormats(formatsOf(label.attributedText(), textScale));
    const bool hasLimit = label.numberOfLines > 0 && !_isFree;
    breakLines(hasLimit ? label.numberOfLines : std::numeric_limits<int>::max());
}

void LabelLayout::breakLines(int most) {
    double top = 0;
    _text.beginLayout();
    for (_lines = 0; _lines < most; ++_lines) {
        QTextLine line = _text.createLine();
        if (!line.isValid()) break;
        line.setLineWidth(_size.width());
        line.setPosition({0, top});
        top += line.height();
    }
    _text.endLayout();
    if (_lines > 0 && !_isFree) elideLastLine(_text.lineAt(_lines - 1));
}

// Text that wraps by words just ends with its last line; other text says that it was cut.
void LabelLayout::elideLastLine(const QTextLine& last) {
    if (_label.numberOfLines != 1 && _label.lineBreakMode == platform::NSLineBreakMode::byWordWrapping) return;
    const QString rest = _text.text().mid(last.textStart());
    const bool isWhole = last.textLength() >= rest.size();
    if (isWhole && last.naturalTextWidth() <= _size.width()) return;
    const QString paragraph = rest.section(QChar::LineSeparator, 0, 0);
    const QString ellipsis = paragraph.size() < rest.size() ? QStringLiteral("…") : QString();
    _elided = QFontMetricsF(firstFont()).elidedText(paragraph + ellipsis, Qt::ElideRight, _size.width());
}

QFont LabelLayout::firstFont() const {
    const auto formats = _text.formats();
    return formats.isEmpty() ? _text.font() : formats.constFirst().format.font();
}

double LabelLayout::textHeight() const {
    if (_lines == 0) return 0;
    const QTextLine last = _text.lineAt(_lines - 1);
    return last.y() + last.height();
}

void LabelLayout::draw(QPainter& painter, QPointF offset, const QColor& colour) const {
    painter.setPen(colour);
    const QPointF origin = offset + QPointF(0, (_size.height() - textHeight()) / 2);
    for (int i = 0; i < _lines; ++i) {
        const QTextLine line = _text.lineAt(i);
        const bool isCut = !_elided.isEmpty() && i == _lines - 1;
        if (!isCut) {
            line.draw(&painter, origin);
            continue;
        }
        painter.setFont(firstFont());
        painter.drawText(origin + QPointF(0, line.y() + line.ascent()), _elided);
    }
}

}  // namespace hosts::desktop
