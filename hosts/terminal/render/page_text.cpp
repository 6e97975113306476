// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/page_text.h"

#include <string_view>
#include <utility>
#include <vector>

#include "hosts/terminal/render/printable.h"
#include "platform/ui/label.h"

namespace hosts::terminal {
namespace {

// Rows stand in from the titles of their sections, and what is said about rows in from the rows: even
// without colour nothing is taken for something else.
constexpr std::size_t detailIndent = 6;

// The escape sequences of ECMA-48 that we use.
enum class Ink { bold, dim, green };

class PageWriter {
public:
    explicit PageWriter(const TextStyle& style) : _style(style) {}

    void title(std::string_view text) { line(inked(printable(text), Ink::bold)); }
    void blank() { _text += '\n'; }
    void groupTitle(std::string_view text) { line("  " + inked(printable(text), Ink::bold)); }

    void paragraph(std::string_view text, std::size_t indent) {
        for (const std::string& part : wrapped(text, _style.width - indent)) {
            line(std::string(indent, ' ') + inked(printable(part), Ink::dim));
        }
    }

    void row(const RowSnapshot& row) {
        const std::string state = stateText(row);
        const std::string mark = row.checked && !row.on ? check() : " ";
        const std::size_t stateColumns = columns(state);
        const std::size_t room = _style.width - 4 - (stateColumns > 0 ? stateColumns + 1 : 0);
        const std::string label = shortened(printable(row.label), room, _style.unicode ? "…" : "...");
        const std::string gap(stateColumns > 0 ? room - columns(label) + 1 : 0, ' ');
        const bool bright = row.enabled;
        line("  " + inkedIf(row.checked && bright, mark, Ink::green) + " " + inkedIf(!bright, label, Ink::dim) + gap +
             inkedState(row, state));
    }

    std::string take() { return std::move(_text); }

private:
    std::string check() const { return _style.unicode ? "✓" : "*"; }

    // What stands at a row's right end. A greyed row says so in words, for those who see no colour.
    std::string stateText(const RowSnapshot& row) const {
        std::string state;
        if (row.on) state = *row.on ? "[ on]" : "[off]";
        if (row.leadsOn()) state = _style.unicode ? "›" : ">";
        if (!row.enabled) state = state.empty() ? "(greyed)" : "(greyed) " + state;
        return state;
    }

    // Dim is for greyed rows alone; a switch that is merely off is as bright as its label.
    std::string inkedState(const RowSnapshot& row, const std::string& state) const {
        if (!row.enabled) return inked(state, Ink::dim);
        return inkedIf(row.on.value_or(false), state, Ink::green);
    }

    std::string inkedIf(bool condition, const std::string& text, Ink ink) const {
        return condition ? inked(text, ink) : text;
    }

    std::string inked(const std::string& text, Ink ink) const {
        if (!_style.colour || text.empty()) return text;
        const char* start = ink == Ink::bold ? "\x1b[1m" : ink == Ink::dim ? "\x1b[2m" : "\x1b[32m";
        return start + text + "\x1b[0m";
    }

    void line(std::string text) {
        while (!text.empty() && text.back() == ' ')
            text.pop_back();
        _text += text + '\n';
    }

    TextStyle _style;
    std::string _text;
};

void writeHeaderView(PageWriter& writer, const platform::UIView& header, std::string_view title) {
    if (auto* label = dynamic_cast<const platform::UILabel*>(&header)) {
        // The page's own title has been written above it.
        if (label->text() && *label->text() != title) writer.paragraph(*label->text(), 0);
    }
    for (const auto& part : header.subviews())
        writeHeaderView(writer, *part, title);
}

void writeRow(PageWriter& writer, const RowSnapshot& row) {
    writer.row(row);
    // A cell of a page's own making shows more than one text: those after the first are its details.
    const std::vector<std::string> texts = row.cell ? textsIn(*row.cell) : std::vector<std::string>();
    for (std::size_t i = 1; i < texts.size(); ++i)
        writer.paragraph(texts[i], detailIndent);
}

void writeSection(PageWriter& writer, const SectionSnapshot& section) {
    writer.blank();
    if (section.header) writer.groupTitle(*section.header);
    for (const RowSnapshot& row : section.rows)
        writeRow(writer, row);
    if (section.footer) writer.paragraph(*section.footer, detailIndent);
}

}  // namespace

std::string pageText(platform::UIViewController& page, const PageSnapshot& snapshot, const TextStyle& style) {
    PageWriter writer(style);
    writer.title(snapshot.title);
    platform::UITableView* table = tableOfPage(page);
    if (table && table->tableHeaderView()) writeHeaderView(writer, *table->tableHeaderView(), snapshot.title);
    for (const SectionSnapshot& section : snapshot.sections)
        writeSection(writer, section);
    return writer.take();
}

}  // namespace hosts::terminal
