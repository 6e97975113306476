// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>
#include <functional>
#include <vector>

namespace hosts::desktop {

/// Something for the user to read in the window, and at most one thing to do about it.
struct Banner {
    /// What it is about. Of each there is one banner at most, but for remarks: a new one takes the place of the old.
    enum class About { change, settings, phone, sample, report, link, composer, undo, remark };

    About about = About::remark;
    /// One or more sentences. It may hold no character that steers the text.
    QString text;
    bool isProblem = false;
    /// Whether it goes by itself after some seconds.
    bool passes = false;
    /// Whether it stays, behind all others, and cannot be closed.
    bool stays = false;
    /// What there is to do, as its button says it, and how; both empty where there is nothing. Done once, with the
    /// banner gone already, so that it may tell of another; or as often as the user likes, by one that stays.
    QString action = {};
    std::function<void()> act = nullptr;
};

/// What the user has yet to read. One is shown at a time: the newest problem, or else the newest, or else what stays.
class Banners : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigation has the banners")
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool problem READ isProblem NOTIFY changed)
    Q_PROPERTY(bool passing READ isPassing NOTIFY changed)
    Q_PROPERTY(bool staying READ isStaying NOTIFY changed)
    /// The label of its button; empty for none.
    Q_PROPERTY(QString action READ action NOTIFY changed)
    /// How many wait behind the one that is shown, but for those that stay.
    Q_PROPERTY(int waiting READ waiting NOTIFY changed)

public:
    void tell(Banner banner);
    /// What was told about this no longer holds.
    void withdraw(Banner::About about);

    bool isShown() const { return !_banners.empty(); }
    /// Of the one that is shown; empty, and false, while there is none.
    QString text() const { return isShown() ? current()->text : QString(); }
    QString action() const { return isShown() ? current()->action : QString(); }
    bool isProblem() const { return isShown() && current()->isProblem; }
    bool isPassing() const { return isShown() && current()->passes; }
    bool isStaying() const { return isShown() && current()->stays; }
    int waiting() const;

    /// The user has read the one that is shown, or wants done what can be done about it.
    Q_INVOKABLE void close();
    Q_INVOKABLE void act();

    /// Has assistive technologies speak of what shows the banner, wherever the focus is.
    Q_INVOKABLE static void announce(QObject* item);

signals:
    void changed();

private:
    using Place = std::vector<Banner>::const_iterator;

    Place current() const;
    Banner take();

    /// In the order in which they were told.
    std::vector<Banner> _banners;
};

}  // namespace hosts::desktop
