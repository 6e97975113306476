// SPDX-License-Identifier: MIT
// Run twice: with the fonts that there are, and as where Inter is missing.
#include "hosts/desktop/program/window_size.h"
#include "tests/desktop/desk.h"

namespace desktop_tests {

/// The smallest window that there is: all of it can be reached, and read whole.
class SmallWindow : public Desk {
protected:
    void openSmall() {
        open();
        view().resize(hosts::desktop::smallestWindow);
        ASSERT_TRUE(waitFor([this] { return view().rootObject()->height() == view().height(); }));
        layOut();
    }
    // Lines find their places as they are drawn, and what they need is known only then.
    void layOut() {
        for (int i = 0; i < 2; ++i) {
            settle();
            view().grabWindow();
        }
    }

    static bool isText(QQuickItem* item) {
        return item->inherits("QQuickText") && !item->property("text").toString().isEmpty();
    }
    // What is drawn of texts, wherever it is scrolled to.
    static std::vector<QQuickItem*> textsIn(QQuickItem* within) {
        std::vector<QQuickItem*> found;
        if (!within->isVisible() || within->opacity() == 0) return found;
        if (isText(within)) found.push_back(within);
        for (QQuickItem* child : within->childItems()) {
            for (QQuickItem* text : textsIn(child))
                found.push_back(text);
        }
        return found;
    }
    void expectWholeTexts(QQuickItem* within, const std::string& where) {
        for (QQuickItem* text : textsIn(within)) {
            const std::string what = where + ": " + text->property("text").toString().toStdString();
            EXPECT_FALSE(text->property("truncated").toBool()) << what;
            const double width = text->property("contentWidth").toDouble();
            const QRectF place = text->mapRectToScene({0, 0, std::min(width, text->width()), text->height()});
            EXPECT_GE(place.left(), -0.5) << what;
            EXPECT_LE(place.right(), view().width() + 0.5) << what;
        }
    }
    void expectRowsReadable(const std::string& where) {
        auto& model = table();
        for (int i = model.rowBeside(-1, 1); i >= 0; i = model.rowBeside(i, 1)) {
            QMetaObject::invokeMethod(seenTable(), "moveTo", Q_ARG(QVariant, i));
            layOut();
            QQuickItem* line = seenTable()->property("currentItem").value<QQuickItem*>();
            ASSERT_NE(line, nullptr);
            expectWholeTexts(line, where);
            const double top = line->mapToItem(seenTable(), {0, 0}).y();
            const std::string label = line->property("text").toString().toStdString();
            EXPECT_GE(top, -0.5) << where << ": " << label;
            EXPECT_LE(top + std::min(line->height(), seenTable()->height()), seenTable()->height() + 0.5)
                << where << ": " << label;
        }
    }
    // The button is whole and on the screen, for the mouse too.
    void expectButton(const QString& name) {
        QQuickItem* button = named(view().rootObject(), name);
        ASSERT_NE(button, nullptr) << name.toStdString();
        expectWholeTexts(button, name.toStdString());
        const QRectF place = button->mapRectToScene({{0, 0}, button->size()});
        EXPECT_TRUE(QRectF({0, 0}, view().size()).adjusted(-0.5, -0.5, 0.5, 0.5).contains(place))
            << name.toStdString() << " at " << place.x() << ", " << place.y();
    }
};

TEST_F(SmallWindow, showsEveryRowOfEveryPageWhole) {
    openSmall();
    const std::vector<QStringList> paths = {{},
                                            {"The Creators"},
                                            {"Advanced Options"},
                                            {"Advanced Options", "Slider Actions"},
                                            {"Advanced Options", "Album Artwork"},
                                            {"Advanced Options", "Close All Apps"},
                                            {"Advanced Options", "Disable in Applications"}};
    for (const QStringList& path : paths) {
        openPage(path);
        layOut();
        expectRowsReadable(path.join(u'/').toStdString());
        while (navigation().back()) {
        }
        settle();
    }
}

TEST_F(SmallWindow, givesACreatorsCellTheLinesThatItNeeds) {
    open();
    openPage({"The Creators"});
    const double usual = lines().at(1)->height();
    view().resize(hosts::desktop::smallestWindow);
    layOut();
    QMetaObject::invokeMethod(seenTable(), "positionViewAtBeginning");
    layOut();
    EXPECT_GT(lines().at(1)->height(), usual);
    view().resize(320, 568);
    layOut();
    EXPECT_EQ(lines().at(1)->height(), usual);
}

TEST_F(SmallWindow, showsWhatIsFoundWhole) {
    openSmall();
    navigation().find().begin("swipe");
    layOut();
    expectButton("Close");
    expectWholeTexts(view().rootObject()->findChild<QQuickItem*>("hits"), "hits");
}

TEST_F(SmallWindow, showsThePhonesWhole) {
    openSmall();
    navigation().phones().begin();
    layOut();
    expectButton("Close");
    expectButton("Open Folder…, The root of a phone's file system, or a folder that looks like one");
}

TEST_F(SmallWindow, asksForAFolderWithEveryButtonInReach) {
    openSmall();
    navigation().phones().begin();
    navigation().phones().askForName();
    layOut();
    expectButton("Cancel");
    expectButton("Open");
    EXPECT_TRUE(view().activeFocusItem()->inherits("QQuickTextInput"));
    const QRectF field = view().activeFocusItem()->mapRectToScene({{0, 0}, view().activeFocusItem()->size()});
    EXPECT_LT(field.bottom(), named(view().rootObject(), "Open")->mapToScene({0, 0}).y()) << "it can be seen";
}

TEST_F(SmallWindow, asksWhetherToDropAPostWithEveryButtonInReach) {
    openSmall();
    click(named(view().rootObject(), "Share"));
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    layOut();
    expectButton("Cancel");
    expectButton("Post");
    navigation().composer()->setText("Something else");
    navigation().composer()->cancel();
    layOut();
    expectButton("Keep Writing");
    expectButton("Discard");
}

TEST_F(SmallWindow, showsAnEmailWhole) {
    openSmall();
    table().tap(lineOf("Fenwary Support"));
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    layOut();
    expectButton("Cancel");
    expectButton("Send");
}

TEST_F(SmallWindow, showsABannersButtonsWhole) {
    openSmall();
    navigation().tell(
        {.text = "This is the sample phone: no device is affected.", .action = "Open Phone…", .act = [] {}});
    navigation().tell({.text = "Something else that takes more than a line here, and goes on", .isProblem = true});
    layOut();
    expectButton("Next");
    click(named(view().rootObject(), "Next"));
    layOut();
    expectButton("Open Phone…");
    expectButton("Close");
}

}  // namespace desktop_tests
