// SPDX-License-Identifier: MIT
#include "hosts/session/finder.h"

#include <algorithm>
#include <cctype>
#include <cwctype>
#include <tuple>
#include <utility>

#include "hosts/session/page_snapshot.h"
#include "hosts/session/page_tour.h"
#include "hosts/session/row_finder.h"
#include "hosts/session/title_path.h"
#include "platform/foundation/utf8.h"
#include "platform/list/list_controller.h"

namespace hosts {

struct SearchedHit {
    FindHit hit;
    // In small letters.
    std::string text;
    std::string key;
    /// All that is said where it stands.
    std::string around;
};

namespace {

using platform::NSIndexPath;
using platform::PSListController;
using platform::PSSpecifier;
using platform::UIViewController;
using Kind = FindHit::Kind;

constexpr std::string_view between = " › ";

std::string inSmallLetters(std::string_view text) {
    std::string small;
    small.reserve(text.size());
    while (!text.empty()) {
        const platform::Utf8Character letter = platform::firstUtf8Character(text);
        platform::appendUtf8(small, static_cast<char32_t>(std::towlower(static_cast<std::wint_t>(letter.code))));
        text.remove_prefix(letter.length);
    }
    return small;
}

bool isOfWord(char byte) {
    const auto unsignedByte = static_cast<unsigned char>(byte);
    return unsignedByte >= 0x80 || std::isalnum(unsignedByte) != 0;
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (auto at = text.begin(); (at = std::find_if(at, text.end(), isOfWord)) != text.end();) {
        const auto end = std::find_if_not(at, text.end(), isOfWord);
        words.emplace_back(at, end);
        at = end;
    }
    return words;
}

bool beginsWord(std::string_view text, std::string_view start) {
    for (std::size_t at = text.find(start); at != text.npos; at = text.find(start, at + 1)) {
        if (at == 0 || !isOfWord(text[at - 1])) return true;
    }
    return false;
}

/// What is looked for.
struct Query {
    explicit Query(std::string_view typed) : text(inSmallLetters(typed)), words(wordsOf(text)) {
        text.erase(0, text.find_first_not_of(' '));
        text.erase(text.find_last_not_of(' ') + 1);
    }
    std::string text;
    std::vector<std::string> words;
};

/// How well something fits, the best first.
enum Fit { keyItself, wholeText, textBegins, wordsBegin, textHolds, keyHolds, placeHolds, none };

Fit fitOfText(const std::string& text, const Query& query) {
    if (text == query.text) return wholeText;
    if (text.starts_with(query.text)) return textBegins;
    const auto holds = [&text](const std::string& word) { return text.find(word) != text.npos; };
    if (!std::ranges::all_of(query.words, holds)) return none;
    const auto begins = [&text](const std::string& word) { return beginsWord(text, word); };
    return std::ranges::all_of(query.words, begins) ? wordsBegin : textHolds;
}

Fit fitOf(const SearchedHit& searched, const Query& query) {
    if (!searched.key.empty() && searched.key == query.text) return keyItself;
    if (const Fit fit = fitOfText(searched.text, query); fit != none) return fit;
    if (searched.key.find(query.text) != std::string::npos) return keyHolds;
    const auto isAround = [&](const std::string& word) { return beginsWord(searched.around, word); };
    return std::ranges::all_of(query.words, isAround) ? placeHolds : none;
}

/// Gathers what one page says.
class PageReader {
public:
    PageReader(UIViewController& page, std::vector<std::string> titles, std::string place,
               std::vector<SearchedHit>& gathered)
        : _page(page),
          _list(dynamic_cast<PSListController*>(&page)),
          _titles(std::move(titles)),
          _place(std::move(place)),
          _gathered(gathered) {}

    void read() {
        platform::UITableView* table = tableOfPage(_page);
        if (!table || !table->dataSource()) return;
        const std::size_t sections = table->dataSource()->numberOfSectionsInTableView(*table);
        for (std::size_t section = 0; section < sections; ++section)
            readSection(*table, section);
    }

private:
    struct Said {
        std::string label;
        std::string details;
        std::string key;
        std::string choiceKey;
    };

    Said rowAt(platform::UITableView& table, NSIndexPath path) const {
        if (const auto row = _list ? _list->specifierAtIndexPath(path) : nullptr) {
            const bool isSwitch = row->cellType() == platform::PSCellType::switchCell;
            return {row->name(), {}, isSwitch ? row->identifier().value_or("") : "", choiceKeyOf(*row).value_or("")};
        }
        const auto cell = table.produceCellForRowAtIndexPath(path);
        if (!cell) return {};
        const RowLook look = RowLook::of(*cell);
        std::string details;
        for (const std::string& detail : look.details)
            details += " " + detail;
        return {look.label, std::move(details), {}, {}};
    }

    void readSection(platform::UITableView& table, std::size_t section) {
        platform::UITableViewDataSource& source = *table.dataSource();
        std::vector<Said> rows;
        const std::size_t count = source.tableView_numberOfRowsInSection(table, section);
        for (std::size_t row = 0; row < count; ++row)
            rows.push_back(rowAt(table, {section, row}));
        const auto header = source.tableView_titleForHeaderInSection(table, section).value_or("");
        const auto footer = source.tableView_titleForFooterInSection(table, section).value_or("");
        const std::string place = header.empty() ? _place : _place + std::string(between) + header;
        for (std::size_t row = 0; row < count; ++row) {
            const Said& said = rows[row];
            add({Kind::row, said.label, _titles, place, {section, row}, said.label, said.key},
                said.details + " " + footer);
        }
        if (rows.empty()) return;
        readChoices(section, rows, header);
        const std::string& last = rows.back().label;
        if (!footer.empty())
            add({Kind::footer, footer, _titles, place + std::string(between) + last, {section, count - 1}, last, {}});
    }

    // The title belongs to the choices where there are some.
    void readChoices(std::size_t section, const std::vector<Said>& rows, std::string header) {
        std::vector<std::string> known;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const std::string& key = rows[row].choiceKey;
            if (key.empty() || std::ranges::find(known, key) != known.end()) continue;
            known.push_back(key);
            const std::string title = std::exchange(header, {});
            FindHit hit{Kind::choices, title, _titles, _place, {section, row}, rows[row].label, key};
            if (title.empty()) hit.text = labelsFor(key, rows);
            add(std::move(hit), {}, title);
        }
        if (!header.empty()) add({Kind::header, header, _titles, _place, {section, 0}, rows.front().label, {}});
    }

    static std::string labelsFor(const std::string& key, const std::vector<Said>& rows) {
        std::string labels;
        for (const Said& row : rows) {
            if (row.choiceKey == key) labels += (labels.empty() ? "" : ", ") + row.label;
        }
        return labels;
    }

    void add(FindHit hit, const std::string& more = {}) {
        const std::string text = hit.text;
        add(std::move(hit), more, text);
    }
    // Of choices without a title, each row is found by its own label.
    void add(FindHit hit, const std::string& more, const std::string& text) {
        if (hit.text.empty()) return;
        SearchedHit searched{{}, inSmallLetters(text), inSmallLetters(hit.key), {}};
        if (!text.empty()) searched.around = inSmallLetters(text + " " + hit.place + " " + more);
        searched.hit = std::move(hit);
        _gathered.push_back(std::move(searched));
    }

    UIViewController& _page;
    PSListController* _list;
    std::vector<std::string> _titles;
    std::string _place;
    std::vector<SearchedHit>& _gathered;
};

/// The hits by how well they fit.
class Ranking {
public:
    Ranking(const Query& query, const std::vector<std::string>& openTitles) : _query(query), _openTitles(openTitles) {}

    void take(const SearchedHit& searched) {
        const Fit fit = fitOf(searched, _query);
        if (fit == none) return;
        const bool isElsewhere = searched.hit.titles != _openTitles;
        _ranked.push_back({{fit, searched.hit.kind, isElsewhere}, &searched.hit});
    }

    std::vector<FindHit> best(std::size_t most) {
        std::ranges::stable_sort(_ranked, {}, &Ranked::order);
        std::vector<FindHit> hits;
        for (const Ranked& each : _ranked) {
            if (hits.size() == most) break;
            hits.push_back(*each.hit);
        }
        return hits;
    }

private:
    struct Ranked {
        std::tuple<Fit, Kind, bool> order;
        const FindHit* hit;
    };

    const Query& _query;
    const std::vector<std::string>& _openTitles;
    std::vector<Ranked> _ranked;
};

// Only those that fit, since there may be many.
std::vector<SearchedHit> applicationsThatFit(const OpenedPage& open, const Query& query) {
    std::vector<SearchedHit> found;
    auto* list = dynamic_cast<PSListController*>(&open.page);
    if (!list) return found;
    std::string place = list->title();
    const auto& rows = list->specifiers();
    for (std::size_t position = 0; position < rows.size(); ++position) {
        if (!isApplicationRow(*rows[position])) continue;
        const std::string& name = rows[position]->name();
        std::string text = inSmallLetters(name);
        if (fitOfText(text, query) == none) continue;
        const auto path = list->indexPathForIndex(position);
        if (path) found.push_back({{Kind::row, name, open.titles, place, *path, name, {}}, std::move(text), {}, {}});
    }
    return found;
}

}  // namespace

Finder::Finder(OpenedPhone& opened) : _phone(opened) {}

Finder::~Finder() = default;

void Finder::forget() {
    _index.reset();
}

const std::vector<SearchedHit>& Finder::index() {
    if (_index) return *_index;
    _index = std::make_unique<std::vector<SearchedHit>>();
    std::string root;
    seeEveryPage(_phone, [&](const std::vector<std::string>& titles, UIViewController& page) {
        if (titles.empty()) root = page.title();
        std::string place = root;
        for (const std::string& title : titles)
            place.append(between).append(title);
        PageReader(page, titles, std::move(place), *_index).read();
    });
    return *_index;
}

std::string remarkOnNoHits(bool isAnythingTyped) {
    return isAnythingTyped ? "Found on no page. Applications are found on the pages that list them."
                           : "A part of a row, of what is written above or below it, or the name of a setting: it is "
                             "looked for on all pages.";
}

std::vector<FindHit> Finder::find(std::string_view text, std::size_t most, const OpenedPage& open) {
    const Query query(text);
    if (query.words.empty()) return {};
    const std::vector<SearchedHit> applications = applicationsThatFit(open, query);
    Ranking ranking(query, open.titles);
    for (const SearchedHit& each : applications)
        ranking.take(each);
    for (const SearchedHit& each : index())
        ranking.take(each);
    return ranking.best(most);
}

platform::Result<platform::Done> goToPage(platform::UINavigationController& navigation,
                                          const std::vector<std::string>& titles, const FindHit& hit) {
    const auto parting = std::ranges::mismatch(titles, hit.titles);
    for (auto left = parting.in1; left != titles.end(); ++left)
        navigation.popViewControllerAnimated(false);
    for (auto title = parting.in2; title != hit.titles.end(); ++title) {
        const auto opened = openPage(navigation, *title);
        if (!opened) return opened;
    }
    return platform::Done();
}

std::optional<NSIndexPath> rowOf(UIViewController& page, const FindHit& hit) {
    const std::vector<NSIndexPath> rows = rowsLabelled(page, hit.label);
    if (rows.empty()) return std::nullopt;
    const auto there = std::ranges::find(rows, hit.path);
    const auto inSection = std::ranges::find(rows, hit.path.section, &NSIndexPath::section);
    return there != rows.end() ? *there : inSection != rows.end() ? *inSection : rows.front();
}

bool isApplicationRow(const PSSpecifier& row) {
    return row.cellType() == platform::PSCellType::listItem && row.identifier() && !row.userInfo();
}

}  // namespace hosts
