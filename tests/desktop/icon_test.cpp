// SPDX-License-Identifier: MIT
#include <set>

#include "hosts/desktop/drawing/view_handle.h"
#include "tests/desktop/desk.h"

namespace desktop_tests {

class Icons : public Desk {
protected:
    // Where the label of a row begins.
    static double labelStart(QQuickItem* line) {
        for (QQuickItem* part : line->childItems()) {
            if (part->inherits("QQuickText") && part->property("text") == line->property("text")) return part->x();
        }
        throw std::runtime_error("the row has no label");
    }

    bool hasIcon(const QString& label) {
        const auto picture = table().data(table().index(lineOf(label)), hosts::desktop::TableModel::PictureRole);
        return picture.value<hosts::desktop::ImageHandle>().image != nullptr;
    }

    // What lies between a row and the one above it, in points: both are on the screen.
    double distanceAbove(const QString& label) {
        const double top = row(label)->y();
        double end = 0;
        for (QQuickItem* line : lines()) {
            if (line->property("lineId").isValid() && line->y() < top) end = line->y() + line->height();
        }
        return top - end;
    }
};

TEST_F(Icons, orPlaceholdersLetTheNamesOfApplicationsLineUp) {
    for (const char* page : {"Close All Apps", "Disable in Applications"}) {
        open();
        openPage({"Advanced Options", page});
        std::set<double> starts;
        for (const char* name : {"App Store", "Maps", "Camera", "Phone", "Photos", "Ledger", "Zulu"})
            starts.insert(labelStart(row(name)));
        EXPECT_EQ(starts, std::set<double>{59}) << page;
    }
}

TEST_F(Icons, thatAreMissingStayMissingInTheRow) {
    open();
    openPage({"Advanced Options", "Disable in Applications"});
    EXPECT_FALSE(hasIcon("App Store"));
    EXPECT_TRUE(hasIcon("Maps"));
    EXPECT_EQ(table().data(table().index(lineOf("App Store")), hosts::desktop::TableModel::InsetRole).toDouble(), 15);
}

TEST_F(Icons, haveNoPlaceholdersWhereNoneAre) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    EXPECT_EQ(labelStart(row("After 1 second")), 15);
    navigation().back();
    settle();
    // Switches have no icons on a page whose applications do.
    openPage({"Close All Apps"});
    EXPECT_EQ(labelStart(row("Auto-Close All Apps")), 15);
}

TEST_F(Icons, ofTheTwoGroupsOfApplicationsStandApartOnEitherPage) {
    open();
    openPage({"Advanced Options", "Close All Apps"});
    const double distance = distanceAbove("Ledger");
    EXPECT_GE(distance, 35);
    navigation().back();
    settle();
    openPage({"Disable in Applications"});
    EXPECT_GE(distanceAbove("Ledger"), distance);
}

}  // namespace desktop_tests
