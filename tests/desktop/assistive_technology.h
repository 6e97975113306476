// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>

#include "tests/kit/child_process.h"

namespace desktop_tests {

/// Something that a program tells over the accessibility bus: a window, a list, a row. It is asked anew each time.
class Accessible {
public:
    Accessible(QDBusConnection bus, QString program, QString path)
        : _bus(std::move(bus)), _program(std::move(program)), _path(std::move(path)) {}

    /// As the bus names it: "check box", "push button".
    QString role() const;
    QString name() const;
    QString description() const;
    bool isEnabled() const { return has(enabled) && has(sensitive); }
    bool isChecked() const { return has(checked); }
    bool isFocusable() const { return has(focusable); }
    bool isFocused() const { return has(focused); }
    bool isModal() const { return has(modal); }
    bool isShowing() const { return has(showing); }
    QStringList actions() const;
    QList<Accessible> children() const;

    /// Whether the program took it.
    bool act(const QString& action) const;
    bool takeFocus() const;

private:
    // The numbers of states on the bus.
    enum State : unsigned {
        checked = 4,
        enabled = 8,
        focusable = 11,
        focused = 12,
        modal = 16,
        sensitive = 24,
        showing = 25
    };

    bool has(State state) const;
    QString property(const char* name) const;
    QDBusMessage call(const char* interface, const char* method, const QVariantList& arguments = {}) const;

    QDBusConnection _bus;
    QString _program;
    QString _path;
};

/// A user who does not see the screen, and has a program read it: an accessibility bus of the test's own.
class AssistiveTechnology {
public:
    /// `environment` is that in which the programs run; its session bus is the one on which the accessibility bus is
    /// found.
    explicit AssistiveTechnology(const kit::Environment& environment);
    ~AssistiveTechnology();

    /// The first window of the first program; nothing as long as there is none.
    std::optional<Accessible> window() const;

private:
    kit::ChildProcess _launcher;
    QString _name;
    std::optional<QDBusConnection> _bus;
};

}  // namespace desktop_tests
