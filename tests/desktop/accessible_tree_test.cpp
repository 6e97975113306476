// SPDX-License-Identifier: MIT
#include <QTest>
#include <algorithm>
#include <functional>

#include "tests/desktop/assistive_technology.h"
#include "tests/desktop/real_program.h"
#include "tests/desktop/settings_text.h"
#include "tests/desktop/virtual_display.h"
#include "tests/kit/page_tables.h"

namespace desktop_tests {
namespace {

using RowKind = kit::ExpectedRow::Kind;
using Rows = QList<Accessible>;

bool isRow(const Accessible& line) {
    return QStringList{"check box", "radio button", "push button"}.contains(line.role());
}

QString expectedRole(const kit::ExpectedRow& row) {
    if (row.kind == RowKind::switchRow) return "check box";
    if (row.kind == RowKind::link) return "push button";
    return row.mode == kit::ExpectedRow::Mode::singleValue ? "radio button" : "check box";
}

QStringList namesOf(const QList<Accessible>& told) {
    QStringList names;
    for (const Accessible& each : told)
        names.append(each.name());
    return names;
}

QList<Accessible> everythingIn(const Accessible& told) {
    QList<Accessible> all{told};
    for (const Accessible& child : told.children())
        all += everythingIn(child);
    return all;
}

}  // namespace

/// The real program in a window of a real display, told over the accessibility bus to somebody who sees nothing of it.
class AccessibleTree : public RealProgram {
protected:
    void SetUp() override {
        ASSERT_TRUE(display.start()) << "no display could be started";
        environment["DISPLAY"] = display.name().toStdString();
        environment["QT_QPA_PLATFORM"] = "xcb";
        // Whether anybody listens is kept among a desktop's settings, and there is no desktop here.
        environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
        user.emplace(environment);
        program.emplace(command({"--phone", phone, "--appearance", "light"}), environment);
        ASSERT_TRUE(waitFor([this] { return user->window() && pageIs("Trivel 3"); })) << program->hasEnded();
        display.focusWindow();
    }

    void TearDown() override {
        if (program && !program->hasEnded()) end(*program);
    }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }

    QList<Accessible> everything() const { return everythingIn(*user->window()); }

    std::optional<Accessible> find(const std::function<bool(const Accessible&)>& fits) const {
        const QList<Accessible> all = everything();
        const auto found = std::ranges::find_if(all, fits);
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
    std::optional<Accessible> table() const {
        return find([](const Accessible& each) { return each.role() == "list"; });
    }
    bool pageIs(const QString& title) const {
        const auto list = table();
        return list && list->name() == title && !list->children().isEmpty();
    }

    // What is told under the name; the test has failed when it does not come.
    Accessible named(const QString& name) const {
        const auto isNamed = [&name](const Accessible& each) { return each.name() == name; };
        if (!waitFor([&] { return find(isNamed).has_value(); })) throw std::runtime_error(name.toStdString());
        return *find(isNamed);
    }

    Rows rows() const {
        Rows found;
        for (const Accessible& line : table()->children()) {
            if (isRow(line)) found.append(line);
        }
        return found;
    }
    Accessible row(const QString& name) const {
        const Rows all = rows();
        const auto found = std::ranges::find(all, name, &Accessible::name);
        if (found == all.end()) throw std::runtime_error(name.toStdString());
        return *found;
    }

    void openPage(const QStringList& titles) const {
        for (const QString& title : titles) {
            ASSERT_TRUE(waitFor([&] { return namesOf(rows()).contains(title) && row(title).act("Press"); }));
            ASSERT_TRUE(waitFor([&] { return pageIs(title); })) << title.toStdString();
        }
    }

    QByteArray settings() const {
        QFile file(phone + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool settingBecomes(const char* key, const char* element) const {
        return waitFor([&] { return holdsSetting(settings().toStdString(), key, element); });
    }

    static kit::PageState stateAtFirst() { return kit::pageState(true, true, kit::expectedDefault); }

    // Every row of the page, its role, whether it can be used, and what stands below it.
    void expectPage(const kit::PageTable& page) const {
        const kit::PageState state = stateAtFirst();
        const Rows told = rows();
        QStringList labels;
        for (const std::string& label : kit::expectedLabels(page, state))
            labels.append(QString::fromStdString(label));
        ASSERT_EQ(namesOf(told), labels);
        const auto greyed = kit::expectedGreyedLabels(page, state);
        qsizetype number = 0;
        for (const std::size_t position : kit::expectedPositions(page, state)) {
            const kit::ExpectedRow& row = page.rows[position];
            if (row.kind == RowKind::group) continue;
            const Accessible& line = told[number++];
            const bool isGreyed = std::ranges::find(greyed, row.label) != greyed.end();
            EXPECT_EQ(line.role(), expectedRole(row)) << row.label;
            EXPECT_EQ(line.isEnabled(), !isGreyed) << row.label;
            if (row.kind != RowKind::choice) continue;
            const auto now = kit::expectedDefault(row.key);
            EXPECT_EQ(line.isChecked(), kit::isExpectedChecked(row, now ? platform::integerValue(*now) : 0))
                << row.label;
        }
    }

    VirtualDisplay display;
    std::optional<AssistiveTechnology> user;
    std::optional<kit::ChildProcess> program;
};

TEST_F(AccessibleTree, tellsEveryRowOfTheRootPageOnOrOffTheScreen) {
    expectPage(kit::rootTable());
}

TEST_F(AccessibleTree, tellsEveryRowOfTheOptions) {
    openPage({"Advanced Options"});
    expectPage(kit::optionsTable());
}

TEST_F(AccessibleTree, tellsValuesAsRadioButtons) {
    openPage({"Advanced Options"});
    EXPECT_FALSE(row("Quick Launcher").act("Press")) << "it is greyed";
    ASSERT_TRUE(row("Reachable Display").act("Toggle"));
    ASSERT_TRUE(waitFor([this] { return row("Quick Launcher").isEnabled(); }));
    openPage({"Quick Launcher"});
    expectPage(kit::quickLauncherTable());
}

TEST_F(AccessibleTree, tellsASwitchBesideItsValues) {
    openPage({"Advanced Options", "Slider Actions"});
    expectPage(kit::sliderActionsTable());
}

TEST_F(AccessibleTree, tellsFlagsAsCheckBoxes) {
    openPage({"Advanced Options", "Album Artwork"});
    expectPage(kit::albumArtworkTable());
}

TEST_F(AccessibleTree, tellsApplicationsAsCheckBoxesToTheLast) {
    openPage({"Advanced Options", "Disable in Applications"});
    const Rows told = rows();
    EXPECT_GT(told.size(), 10);
    for (const Accessible& application : told)
        EXPECT_EQ(application.role(), "check box") << application.name().toStdString();
    ASSERT_TRUE(told.constLast().act("Toggle"));
    EXPECT_TRUE(waitFor([&] { return told.constLast().isChecked(); }));
}

TEST_F(AccessibleTree, tellsCreatorsByTheirProfiles) {
    openPage({"The Creators"});
    const QStringList names = namesOf(rows());
    ASSERT_EQ(names.size(), 3);
    EXPECT_TRUE(names[0].startsWith("Daxon (@Daxon_QT), ")) << names[0].toStdString();
    EXPECT_TRUE(names[1].startsWith("Movane (@MovaneX), ")) << names[1].toStdString();
    EXPECT_EQ(names[2], "Follow Fenwary");
}

TEST_F(AccessibleTree, footerDescribesTheRowAboveItAndTakesNoFocus) {
    const auto lines = table()->children();
    const auto footer = std::ranges::find_if(lines, [](const Accessible& line) {
        return line.role() == "label" && line.name().startsWith("Merge Multitasking");
    });
    ASSERT_NE(footer, lines.end());
    EXPECT_EQ(row("Multi-Center").description(), footer->name());
    EXPECT_FALSE(footer->isFocusable());
    EXPECT_EQ(footer->actions(), QStringList());
    EXPECT_EQ(row("The Creators").description(), "");
}

TEST_F(AccessibleTree, focusThatIsSetBringsTheKeysThere) {
    openPage({"Advanced Options"});
    const Accessible wanted = row("Invert Hot Corners");
    EXPECT_FALSE(wanted.isShowing()) << "it is further down";
    ASSERT_TRUE(wanted.takeFocus());
    ASSERT_TRUE(waitFor([&] { return wanted.isFocused() && wanted.isShowing(); }));
    display.press(VirtualDisplay::Space);
    EXPECT_TRUE(settingBecomes("InvertHotCorners", "<true/>")) << settings().toStdString();
}

TEST_F(AccessibleTree, buttonThatIsGivenTheFocusActsOnTheFirstKey) {
    ASSERT_TRUE(named("Share").takeFocus());
    ASSERT_TRUE(waitFor([&] { return named("Share").isFocused(); }));
    display.press(VirtualDisplay::Space);
    const Accessible text = named("Text of the post");
    EXPECT_EQ(text.role(), "text");
    EXPECT_EQ(named("106 characters left").role(), "label");
}

TEST_F(AccessibleTree, oneThingIsFocusedAtATime) {
    const auto focused = [this] {
        QStringList names;
        for (const Accessible& each : everything()) {
            if (each.isFocused()) names.append(each.name());
        }
        return names;
    };
    ASSERT_TRUE(row("Hot Corners").takeFocus());
    ASSERT_TRUE(waitFor([&] { return row("Hot Corners").isFocused(); }));
    EXPECT_EQ(focused(), QStringList{"Hot Corners"});
    ASSERT_TRUE(named("Share").takeFocus());
    ASSERT_TRUE(waitFor([&] { return named("Share").isFocused(); }));
    EXPECT_EQ(focused(), QStringList{"Share"});
}

TEST_F(AccessibleTree, noActionIsTwiceAndNoTextEmpty) {
    for (const auto& title : {"", "Advanced Options"}) {
        if (*title) openPage({title});
        for (const Accessible& each : everything()) {
            EXPECT_TRUE(each.role() != "label" || !each.name().isEmpty());
            QStringList actions = each.actions();
            EXPECT_EQ(actions.removeDuplicates(), 0) << each.name().toStdString();
        }
    }
}

TEST_F(AccessibleTree, buttonsThatAreAbsentAreNotTold) {
    EXPECT_FALSE(find([](const Accessible& each) { return each.name().startsWith("Back to"); }));
    openPage({"Advanced Options"});
    EXPECT_TRUE(find([](const Accessible& each) { return each.name() == "Back to Trivel 3"; }));
    EXPECT_FALSE(find([](const Accessible& each) { return each.name() == "Share"; }));
}

TEST_F(AccessibleTree, switchIsMovedAndSaysSo) {
    const Accessible wanted = row("Multi-Center");
    EXPECT_EQ(wanted.actions(), (QStringList{"Toggle", "SetFocus"}));
    ASSERT_TRUE(wanted.isChecked());
    ASSERT_TRUE(wanted.act("Toggle"));
    EXPECT_TRUE(settingBecomes("MultiCenter", "<false/>"));
    EXPECT_FALSE(wanted.isChecked());
}

TEST_F(AccessibleTree, pageThatLiesBeneathTakesNoAction) {
    const Accessible beneath = row("Hot Corners");
    const Accessible heart = named("Share");
    openPage({"Advanced Options"});
    beneath.act("Toggle");
    beneath.takeFocus();
    heart.act("Press");
    EXPECT_FALSE(find([](const Accessible& each) { return each.role() == "dialog"; }));
    ASSERT_TRUE(row("Reachable Display").act("Toggle"));
    ASSERT_TRUE(settingBecomes("ReachabilityMode", "<false/>")) << settings().toStdString();
    EXPECT_FALSE(settings().contains("HotCorners"));
}

TEST_F(AccessibleTree, composerIsModalAndNothingBeneathItTakesAnAction) {
    const Accessible beneath = row("Quick Switcher");
    ASSERT_TRUE(row("Fenwary Support").act("Press"));
    const auto isDialog = [](const Accessible& each) { return each.role() == "dialog"; };
    ASSERT_TRUE(waitFor([&] { return find(isDialog).has_value(); }));
    EXPECT_TRUE(find(isDialog)->isModal());
    EXPECT_EQ(find(isDialog)->name(), "Trivel Support");
    EXPECT_FALSE(table()) << "the page beneath is not told";
    beneath.act("Toggle");
    ASSERT_TRUE(named("Cancel").act("Press"));
    ASSERT_TRUE(waitFor([this] { return pageIs("Trivel 3"); }));
    ASSERT_TRUE(row("Multi-Center").act("Toggle"));
    ASSERT_TRUE(settingBecomes("MultiCenter", "<false/>"));
    EXPECT_FALSE(settings().contains("QuickSwitcher"));
}

TEST_F(AccessibleTree, menuIsOpenedReadAndChosenFrom) {
    ASSERT_TRUE(row("Hot Corners").act("Toggle"));
    ASSERT_TRUE(waitFor([this] { return row("Hot Corners").description().startsWith("Not at its default."); }));
    ASSERT_TRUE(named("Menu").act("Press"));
    const Accessible undo = named("Undo");
    EXPECT_EQ(undo.role(), "menu item");
    EXPECT_EQ(undo.description(), "Ctrl+Z");
    EXPECT_TRUE(undo.isEnabled());
    EXPECT_FALSE(named("Redo").isEnabled());
    EXPECT_FALSE(named("Redo").act("Press"));
    EXPECT_FALSE(table()) << "what lies beneath is not told";
    ASSERT_TRUE(undo.act("Press"));
    ASSERT_TRUE(waitFor([this] { return table() && row("Hot Corners").isChecked(); }));
    EXPECT_FALSE(row("Hot Corners").description().startsWith("Not at its default."));
    EXPECT_NO_THROW(named("Undone: HotCorners"));
    ASSERT_TRUE(named("Menu").act("Press"));
    ASSERT_TRUE(named("About Trivel 3").act("Press"));
    EXPECT_TRUE(named("About").isModal());
}

TEST_F(AccessibleTree, rowsThatComeAndGoAreToldAsTheyAre) {
    openPage({"Advanced Options"});
    const auto isThere = [this] { return namesOf(rows()).contains("Apply to Quick Switcher"); };
    ASSERT_FALSE(isThere());
    ASSERT_TRUE(row("Open to Last App").act("Toggle"));
    ASSERT_TRUE(waitFor(isThere));
    ASSERT_TRUE(row("Apply to Quick Switcher").act("Toggle"));
    EXPECT_TRUE(settingBecomes("OpenToLastAppWithQS", "<true/>")) << settings().toStdString();
    ASSERT_TRUE(row("Open to Last App").act("Toggle"));
    EXPECT_TRUE(waitFor([&] { return !isThere(); }));
}

}  // namespace desktop_tests
