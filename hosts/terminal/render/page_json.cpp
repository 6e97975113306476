// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/page_json.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "hosts/terminal/render/value_json.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;

// An image of the bundle goes by its name; an application's icon has none to tell.
json iconJson(const RowSnapshot& row) {
    if (!row.icon) return false;
    if (row.icon->file().empty()) return true;
    return row.icon->name();
}

json rowJson(const RowSnapshot& row) {
    return {{"label", row.label},     {"kind", kindName(row.kind)}, {"identifier", orNull(row.identifier)},
            {"key", orNull(row.key)}, {"value", orNull(row.value)}, {"enabled", row.enabled},
            {"checked", row.checked}, {"on", orNull(row.on)},       {"icon", iconJson(row)}};
}

json sectionJson(const SectionSnapshot& section) {
    json rows = json::array();
    for (const RowSnapshot& row : section.rows)
        rows.push_back(rowJson(row));
    return {{"header", orNull(section.header)}, {"footer", orNull(section.footer)}, {"rows", std::move(rows)}};
}

// Space that a grouped table leaves above each section.
constexpr double sectionGap = 35;

json rectJson(const platform::CGRect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

std::string fontText(const platform::UIFont& font) {
    std::array<char, 32> size;
    std::snprintf(size.data(), size.size(), "%g", font.pointSize);
    return font.name + " " + size.data();
}

// #RRGGBB, with a fourth pair for an alpha below 1.
std::string colourText(const platform::UIColor& colour) {
    auto byte = [](double component) { return static_cast<unsigned>(std::lround(component * 255)) & 0xFFu; };
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", byte(colour.red), byte(colour.green), byte(colour.blue));
    std::string result = text.data();
    if (colour.alpha < 1) {
        std::snprintf(text.data(), text.size(), "%02X", byte(colour.alpha));
        result += text.data();
    }
    return result;
}

void describeLabel(json& node, const platform::UILabel& label) {
    if (auto text = label.text()) node["text"] = *text;
    node["font"] = fontText(label.attributedText().empty() ? label.font : label.attributedText().front().font);
    node["colour"] = colourText(label.textColor);
    if (label.attributedText().empty()) return;
    for (const platform::TextRun& run : label.attributedText()) {
        node["runs"].push_back({{"text", run.text}, {"font", fontText(run.font)}});
    }
}

void describeImage(json& node, const std::shared_ptr<const platform::UIImage>& image) {
    if (image) node["image"] = image->name();
}

json nodeJson(const platform::UIView& view) {
    json node = {{"class", view.className()}, {"frame", rectJson(view.frame())}, {"subviews", json::array()}};
    if (auto* label = dynamic_cast<const platform::UILabel*>(&view)) describeLabel(node, *label);
    if (auto* picture = dynamic_cast<const platform::UIImageView*>(&view)) describeImage(node, picture->image);
    if (auto* button = dynamic_cast<const platform::UIButton*>(&view)) {
        describeImage(node, button->imageForState(platform::UIControlStateNormal));
    }
    for (const auto& part : view.subviews())
        node["subviews"].push_back(nodeJson(*part));
    return node;
}

}  // namespace

json pageJson(const PageSnapshot& page) {
    json sections = json::array();
    for (const SectionSnapshot& section : page.sections)
        sections.push_back(sectionJson(section));
    return {{"class", page.className}, {"title", page.title}, {"sections", std::move(sections)}};
}

json viewTreeJson(platform::UIViewController& page, const PageSnapshot& snapshot) {
    json root = nodeJson(page.view());
    double top = 0;
    platform::UITableView* table = tableOfPage(page);
    if (table && table->tableHeaderView()) {
        root["subviews"].push_back(nodeJson(*table->tableHeaderView()));
        top = table->tableHeaderView()->frame().height;
    }
    for (const SectionSnapshot& section : snapshot.sections) {
        top += sectionGap;
        for (const RowSnapshot& row : section.rows) {
            if (!row.cell) continue;
            platform::CGRect frame = row.cell->frame();
            json cell = nodeJson(*row.cell);
            cell["frame"] = rectJson({frame.x, top, frame.width, frame.height});
            root["subviews"].push_back(std::move(cell));
            top += frame.height;
        }
    }
    return root;
}

}  // namespace hosts::terminal
