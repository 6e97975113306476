// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/contrast.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <algorithm>
#include <map>

#include "tests/desktop/desk.h"

namespace desktop_tests {
namespace {

using hosts::desktop::contrastBetween;
using hosts::desktop::Taste;
using hosts::desktop::withContrast;

const QColor white = Qt::white;
const QColor black = Qt::black;

/// What may stand on what, by the theme's names, and whether it is text.
struct Pair {
    const char* colour;
    std::vector<const char*> grounds;
    bool isText = false;
};

const std::vector<Pair> pairs = {
    {"text", {"page", "row", "rowPressed", "bar", "card"}, true},
    {"secondary", {"page", "row", "card"}, true},
    {"tint", {"page", "row", "bar", "card"}, true},
    {"tintText", {"tint"}, true},
    {"danger", {"bar", "card"}, true},
    {"greyed", {"row"}},
    {"tint", {"rowPressed"}},
    {"focus", {"page", "row", "bar", "card"}},
    {"disclosure", {"row", "rowPressed"}},
    {"switchOutline", {"row", "rowPressed", "switchOff"}},
    {"switchOn", {"row", "rowPressed"}},
    {"knobOn", {"switchOn"}},
    {"knobOff", {"switchOff"}},
};

std::vector<Taste> tastes() {
    std::vector<Taste> all;
    for (bool dark : {false, true}) {
        for (bool highContrast : {false, true}) {
            for (const char* accent :
                 {"", "#ffff00", "#000000", "#ffffff", "#ff0000", "#00ff00", "#3584e4", "#813d9c"}) {
                const QColor colour(accent);
                all.push_back({.dark = dark,
                               .highContrast = highContrast,
                               .lessMotion = true,
                               .accent = colour.isValid() ? std::optional(colour) : std::nullopt});
            }
        }
    }
    return all;
}

std::string describe(const Taste& taste) {
    return std::string(taste.dark ? "dark" : "light") + (taste.highContrast ? ", high contrast" : "") +
           (taste.accent ? ", accent " + taste.accent->name().toStdString() : "");
}

}  // namespace

TEST(Contrast, isCountedAsTheWebDoes) {
    EXPECT_NEAR(contrastBetween(black, white), 21, 1e-6);
    EXPECT_NEAR(contrastBetween(white, black), 21, 1e-6);
    EXPECT_NEAR(contrastBetween(Qt::red, Qt::red), 1, 1e-9);
    EXPECT_NEAR(contrastBetween(QColor("#767676"), white), 4.54, 0.01);
    EXPECT_NEAR(contrastBetween(QColor("#ff0000"), white), 4.0, 0.01);
}

TEST(Contrast, thatIsThereLeavesTheColourAlone) {
    EXPECT_EQ(withContrast(QColor("#0000c0"), {white}, 4.5), QColor("#0000c0"));
}

TEST(Contrast, isReachedOnEveryGroundAndNotByMuchMore) {
    const QList<QColor> grounds = {white, QColor("#efeff4")};
    for (const char* name : {"#ffff00", "#808080", "#ff00ff", "#00ff00", "#3584e4"}) {
        const QColor reached = withContrast(QColor(name), grounds, 4.5);
        EXPECT_GE(contrastBetween(reached, grounds[0]), 4.5) << name;
        EXPECT_GE(contrastBetween(reached, grounds[1]), 4.5) << name;
        EXPECT_LT(contrastBetween(reached, grounds[1]), 4.8) << name;
    }
}

TEST(Contrast, keepsTheHue) {
    const QColor given("#3584e4");
    EXPECT_NEAR(withContrast(given, {white}, 7).hslHue(), given.hslHue(), 2);
    EXPECT_NEAR(withContrast(given, {black}, 12).hslHue(), given.hslHue(), 2);
}

TEST(Contrast, ofATranslucentColourIsWhatShines) {
    const QColor grey = withContrast(QColor(0, 0, 0, 128), {white}, 1);
    EXPECT_NEAR(grey.lightness(), 127, 2);
    EXPECT_EQ(grey.alpha(), 255);
}

TEST(Contrast, thatNothingReachesComesAsNearAsItCan) {
    EXPECT_EQ(withContrast(QColor("#888888"), {QColor("#777777")}, 15), black);
}

class Colours : public Desk {
protected:
    QColor themeColour(const char* name) {
        QQuickItem* shell = view().rootObject();
        return QQmlExpression(qmlContext(shell), shell, QStringLiteral("Theme.") + name).evaluate().value<QColor>();
    }

    // The colours of a rectangle of what is drawn, the commonest first.
    static std::vector<QRgb> coloursIn(const QImage& picture, const QRect& area) {
        std::map<QRgb, int> counts;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                ++counts[picture.pixel(x, y)];
        }
        std::vector<QRgb> colours;
        for (const auto& [colour, count] : counts)
            colours.push_back(colour);
        std::ranges::sort(colours, std::ranges::greater{}, [&counts](QRgb colour) { return counts[colour]; });
        return colours;
    }

    // How much what is drawn in a part of an item differs from the commonest colour there.
    double contrastIn(QQuickItem* item, QRectF part) {
        const QImage picture = view().grabWindow();
        const QRect area = item->mapRectToScene(part).toAlignedRect() & picture.rect();
        const auto colours = coloursIn(picture, area);
        double most = 1;
        for (QRgb colour : colours)
            most = std::max(most, contrastBetween(QColor(colour), QColor(colours.front())));
        return most;
    }
};

TEST_F(Colours, differEnoughFromAllThatTheyMayStandOn) {
    open();
    for (const Taste& taste : tastes()) {
        session->window().setTaste(taste);
        for (const Pair& pair : pairs) {
            for (const char* ground : pair.grounds) {
                const double least = taste.highContrast ? (pair.isText ? 7 : 4.5) : pair.isText ? 4.5 : 3;
                EXPECT_GE(contrastBetween(themeColour(pair.colour), themeColour(ground)), least)
                    << pair.colour << " on " << ground << ", " << describe(taste);
            }
        }
    }
}

TEST_F(Colours, ofTheScrollThumbCanBeSeenOnAllThatItPasses) {
    open();
    for (const Taste& taste : tastes()) {
        session->window().setTaste(taste);
        const QColor thumb = themeColour("scrollThumb");
        for (const char* ground : {"page", "row"}) {
            const QColor shining = withContrast(thumb, {themeColour(ground)}, 1);
            EXPECT_GE(contrastBetween(shining, themeColour(ground)), 3) << ground << ", " << describe(taste);
        }
    }
}

TEST_F(Colours, followTheAccentWhereItCanBeRead) {
    open();
    session->window().setTaste({.accent = QColor("#813d9c")});
    EXPECT_EQ(themeColour("tint"), QColor("#813d9c"));
    session->window().setTaste({.accent = QColor("#ffff00")});
    EXPECT_NEAR(themeColour("tint").hslHue(), 60, 2);
    const QColor tint = themeColour("tint");
    session->window().setTaste({.accent = std::nullopt});
    EXPECT_NE(themeColour("tint"), tint);
}

TEST_F(Colours, ofRowsAndSwitchesAreDrawnAsTheyAre) {
    writeSettings("<key>QuickSwitcher</key><false/>");
    open();
    for (const Taste& taste : tastes()) {
        session->window().setTaste(taste);
        settle();
        const double mark = taste.highContrast ? 4.5 : 3;
        const double text = taste.highContrast ? 7 : 4.5;
        for (const char* label : {"Multi-Center", "Quick Switcher"}) {
            QQuickItem* line = row(label);
            const QRectF control(line->width() - 66, 6, 51, 31);
            EXPECT_GE(contrastIn(line, control.adjusted(-4, -4, 4, 4)), mark) << label << ", " << describe(taste);
            // Inside the outline, where knob and track alone are.
            EXPECT_GE(contrastIn(line, control.adjusted(8, 12, -8, -12)), mark) << label << ", " << describe(taste);
            EXPECT_GE(contrastIn(line, {57, 4, 150, 36}), text) << label << ", " << describe(taste);
        }
        QQuickItem* link = row("Advanced Options");
        EXPECT_GE(contrastIn(link, {link->width() - 24, 10, 12, 24}), mark) << describe(taste);
    }
}

TEST_F(Colours, ofWhatThePageDrawsItselfAreReadable) {
    open();
    const Taste both[] = {{.lessMotion = true, .accent = std::nullopt},
                          {.dark = true, .lessMotion = true, .accent = std::nullopt},
                          {.highContrast = true, .lessMotion = true, .accent = std::nullopt},
                          {.dark = true, .highContrast = true, .lessMotion = true, .accent = std::nullopt}};
    // The makers' names in the head of the page.
    for (const Taste& taste : both) {
        session->window().setTaste(taste);
        settle();
        QQuickItem* head = seenTable()->property("headerItem").value<QQuickItem*>();
        EXPECT_GE(contrastIn(head, {0, 63, head->width(), 34}), taste.highContrast ? 6.9 : 4.4) << describe(taste);
    }
    openPage({"The Creators"});
    for (const Taste& taste : both) {
        session->window().setTaste(taste);
        settle();
        QQuickItem* creator = lines().at(1);
        EXPECT_GE(contrastIn(creator, {79, 40, 150, 50}), taste.highContrast ? 6.9 : 4.4) << describe(taste);
    }
}

}  // namespace desktop_tests
