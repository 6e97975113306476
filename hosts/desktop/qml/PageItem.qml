// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A page of the stack with its part of the bar, as it comes, is seen, is covered and goes.
FocusScope {
    id: item

    required property Page page
    required property Navigation navigation

    // From -1, beneath the page that is seen, over 0, seen, to 1, off to the right.
    property real slide: page.place
    readonly property bool isSeen: page.place === 0
    // The first page may have a column of its own, over what moves in the other one.
    readonly property bool isFirst: page.depth === 0
    readonly property bool isBeside: navigation.sideBySide && !isFirst
    x: isBeside ? Theme.firstColumn : 0
    z: navigation.sideBySide && isFirst ? 1 : 0
    width: navigation.sideBySide && isFirst ? Theme.firstColumn : parent.width - x
    height: parent.height

    Behavior on slide {
        enabled: item.page.animated && Theme.pushTime > 0
        NumberAnimation {
            id: slideMotion
            duration: Theme.pushTime
            easing.type: Easing.OutCubic
        }
    }
    onSlideChanged: if (slide === 1 && page.place === 1) navigation.pageLeft(page)

    visible: slide > -1 && slide < 1
    enabled: isSeen
    readonly property string title: page.title
    Accessible.role: Accessible.Pane
    readonly property bool isCurrent: isSeen && navigation.current === page
    onIsCurrentChanged: if (isCurrent) table.forceActiveFocus()
    Component.onCompleted: if (isCurrent) table.forceActiveFocus()
    // What a page is no longer in view for, it has no keys for either.
    Connections {
        target: item.navigation
        function onSideBySideChanged() { if (item.isCurrent) item.focus = true }
    }

    Item {
        x: (item.slide > 0 ? item.slide : item.slide * 0.3) * parent.width
        y: Theme.barHeight
        width: parent.width
        height: parent.height - y

        Rectangle {
            anchors.fill: parent
            color: Theme.page
        }
        TablePage {
            id: table
            anchors.fill: parent
            page: item.page
            focus: true
            interactive: item.isSeen
        }
        TypedName {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.margin
            text: item.page.table ? item.page.table.typed : ""
            isVain: item.page.table !== null && item.page.table.typedInVain
        }
        Connections {
            target: item.page
            function onRowWanted(line) { table.placeFocus(line) }
            function onKeysWanted() { table.forceActiveFocus() }
        }
        // The page that comes over this one shades it.
        Rectangle {
            anchors.fill: parent
            color: "#000000"
            opacity: item.slide < 0 ? -item.slide * 0.12 : 0
            visible: opacity > 0
        }
        Rectangle {
            x: -width
            width: 6
            height: parent.height
            visible: item.slide > 0
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: "#00000000" }
                GradientStop { position: 1; color: "#22000000" }
            }
        }
    }

    PageBar {
        width: parent.width
        page: item.page
        hasBack: item.page.depth > (item.isBeside ? 1 : 0)
        hasMenu: !item.navigation.sideBySide || item.page === item.navigation.current
        slide: item.slide
        phone: item.navigation.phones.name
        onBackWanted: item.navigation.back()
        onPhonesWanted: item.navigation.phones.begin()
        onMenuWanted: item.navigation.menuAsked()
    }
}
