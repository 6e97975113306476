// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "tests/kit/child_process.h"

struct xcb_connection_t;

namespace desktop_tests {

/// An X display in memory, without a window manager, and a user before it. What the user does comes
/// to programs as from a real mouse and real keys.
class VirtualDisplay {
public:
    /// The keys that tests press, by their X names' values.
    enum Key : quint32 {
        Space = 0x20,
        LetterF = 0x66,
        LetterO = 0x6f,
        LetterQ = 0x71,
        LetterZ = 0x7a,
        Home = 0xff50,
        Up = 0xff52,
        Down = 0xff54,
        End = 0xff57,
        Return = 0xff0d,
        Escape = 0xff1b,
        Equals = 0x3d,
        Digit0 = 0x30,
        LetterU = 0x75,
        Menu = 0xff67,
        F10 = 0xffc7,
        Shift = 0xffe1,
        Left = 0xff51,
        Control = 0xffe3,
        Alt = 0xffe9
    };
    enum Button : quint8 { LeftButton = 1, RightButton = 3, WheelDown = 5, BackButton = 8 };

    ~VirtualDisplay();

    /// Width, height and depth of its screen.
    static constexpr const char* usualScreen = "800x900x24";

    /// Starts the display under a number that is free. False when that does not work.
    bool start(const char* screen = usualScreen);

    /// What DISPLAY has to be.
    const QString& name() const { return _name; }

    /// What can be seen.
    QImage picture() const;
    /// The colour of one pixel of it; black where there is nothing.
    QRgb pixel(QPoint at) const;
    /// Where the one window is; empty while there is none.
    QRect window() const;
    /// What the topmost window is called.
    QString windowTitle() const;
    /// Gives the window the keyboard, as a window manager would.
    void focusWindow();

    void click(QPoint at, Button button = LeftButton);
    /// Moves the mouse with its button down.
    void drag(QPoint from, QPoint to);
    void press(Key key, std::vector<Key> modifiers = {});
    /// Small letters of ASCII.
    void type(const char* letters);

private:
    struct Closer {
        void operator()(xcb_connection_t* connection) const;
    };

    quint32 root() const;
    quint32 topWindow() const;
    quint8 codeOf(Key key) const;
    void send(quint8 kind, quint8 detail, QPoint at = {});

    std::optional<kit::ChildProcess> _server;
    QString _name;
    std::unique_ptr<xcb_connection_t, Closer> _connection;
};

}  // namespace desktop_tests
