// SPDX-License-Identifier: MIT
#include <QTest>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "tests/desktop/desk.h"

namespace desktop_tests {

class Scrolling : public Desk {
protected:
    void install(int applications) {
        for (int i = 0; i < applications; ++i) {
            const std::string name = "App" + std::to_string(i);
            const std::filesystem::path app = phoneFolder + "/Applications/" + name + ".app";
            std::filesystem::create_directories(app);
            std::ofstream(app / "Info.plist")
                << "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>org.example." << name
                << "</string><key>CFBundleDisplayName</key><string>" << name
                << "</string><key>CFBundleExecutable</key><string>" << name << "</string></dict></plist>";
        }
    }

    std::size_t cellsInUse() {
        auto& page = dynamic_cast<platform::PSListController&>(navigation().current()->controller());
        return static_cast<std::size_t>(
            std::ranges::count_if(page.specifiers(), [](const auto& row) { return row->cell() != nullptr; }));
    }

    // Lines must tile what is seen of the table.
    void expectNoHoles() {
        QQuickItem* table = seenTable();
        const double top = table->property("contentY").toDouble();
        const auto all = lines();
        ASSERT_FALSE(all.empty());
        double reached = std::max(top, all.front()->y());
        for (QQuickItem* line : all) {
            EXPECT_LE(line->y(), reached + 0.5) << "a hole above " << line->property("text").toString().toStdString();
            reached = std::max(reached, line->y() + line->height());
        }
    }
};

TEST_F(Scrolling, producesCellsOnlyAsTheyComeOnScreenAndLetsThemGo) {
    install(300);
    open();
    openPage({"Advanced Options", "Close All Apps"});
    EXPECT_GT(table().rowCount(), 300);
    EXPECT_LE(cellsInUse(), 20u);
    seenTable()->setProperty("contentY", 4000);
    settle();
    EXPECT_GT(cellsInUse(), 5u);
    EXPECT_LE(cellsInUse(), 20u) << "those that have left the screen are let go";
    expectNoHoles();
}

// What a cell has shown of the maker's row stays in it, beneath what it shows when another row takes it over.
TEST_F(Scrolling, handsCellsOnWithoutTheNamesThatTheyHad) {
    using hosts::desktop::TableModel;
    open();
    openPage({"The Creators"});
    auto& model = table();
    const int maker = lineOf("Follow Fenwary");
    ASSERT_GE(maker, 0);
    model.lineLeft(model.data(model.index(maker), TableModel::LineIdRole).toInt());
    writeSettings("<key>HotCorners</key><false/>");
    navigation().redrawVisibleRows();
    settle();
    const QStringList labels = rowLabels();
    ASSERT_EQ(labels.size(), 3);
    EXPECT_TRUE(labels[0].startsWith("Daxon (@Daxon_QT), ")) << labels[0].toStdString();
    EXPECT_TRUE(labels[1].startsWith("Movane (@MovaneX), ")) << labels[1].toStdString();
    EXPECT_EQ(labels[2], "Follow Fenwary");
}

TEST_F(Scrolling, toAndFroLeavesNoHoles) {
    open();
    openPage({"Advanced Options"});
    for (double place : {400.0, 900.0, 100.0, 1200.0, 0.0, 700.0, 300.0}) {
        seenTable()->setProperty("contentY", place);
        settle();
        QMetaObject::invokeMethod(seenTable(), "returnToBounds");
        settle();
        expectNoHoles();
    }
}

// Coming from below, a section's line is drawn before what stands above it.
TEST_F(Scrolling, fromTheEndUpLeavesEverySectionItsLine) {
    open();
    QMetaObject::invokeMethod(seenTable(), "positionViewAtEnd");
    settle();
    const QImage picture = view().grabWindow();
    int sections = 0;
    for (QQuickItem* line : lines()) {
        const int y = static_cast<int>(std::lround(line->mapToScene({0, 0}).y()));
        if (!line->property("starts").toBool() || y < 50) continue;
        ++sections;
        EXPECT_EQ(picture.pixelColor(300, y), QColor("#c8c7cc")) << line->property("text").toString().toStdString();
    }
    EXPECT_GE(sections, 4);
}

TEST_F(Scrolling, wheelMovesTheTable) {
    open();
    openPage({"Advanced Options"});
    const double before = seenTable()->property("contentY").toDouble();
    const QPointF place(150, 300);
    QWheelEvent event(place, view().mapToGlobal(place), {}, {0, -240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&view(), &event);
    EXPECT_TRUE(waitFor([&] { return seenTable()->property("contentY").toDouble() > before + 20; }));
}

}  // namespace desktop_tests
