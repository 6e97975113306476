// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QPointF>
#include <memory>

#include "hosts/desktop/drawing/view_handle.h"
#include "hosts/desktop/model/table_model.h"
#include "platform/ui/view_controller.h"

namespace hosts::desktop {

/// A page on the navigation stack, as it is drawn.
class Page : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigation has the pages")
    /// How many pages lead to it: 0 for the first one.
    Q_PROPERTY(int depth READ depth CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(hosts::desktop::ViewHandle titleView READ titleView CONSTANT)
    Q_PROPERTY(bool hasTitleView READ hasTitleView CONSTANT)
    Q_PROPERTY(QString backTitle READ backTitle CONSTANT)
    Q_PROPERTY(hosts::desktop::ViewHandle rightItem READ rightItem CONSTANT)
    Q_PROPERTY(bool hasRightItem READ hasRightItem CONSTANT)
    Q_PROPERTY(QString rightItemName READ rightItemName CONSTANT)
    Q_PROPERTY(hosts::desktop::TableModel* table READ table CONSTANT)
    Q_PROPERTY(hosts::desktop::ViewHandle header READ header NOTIFY headerChanged)
    Q_PROPERTY(QString headerText READ headerText CONSTANT)
    Q_PROPERTY(int place READ place NOTIFY placeChanged)
    Q_PROPERTY(bool animated READ isAnimated NOTIFY placeChanged)

public:
    /// Where a page is: beneath another one, seen, or to the right of the screen, from where it comes and to where it
    /// goes.
    enum Place { Beneath = -1, Seen = 0, Away = 1 };
    Q_ENUM(Place)

    /// `before` is the page that leads to this one; null for none. `defaults` are as of the page's table.
    Page(std::shared_ptr<platform::UIViewController> controller, const Page* before, const Defaults* defaults);

    platform::UIViewController& controller() const { return *_controller; }
    /// Null for a page that is no table.
    TableModel* table() const { return _table.get(); }

    int depth() const { return _depth; }
    QString title() const;
    /// Names the page before this one.
    const QString& backTitle() const { return _backTitle; }
    ViewHandle titleView() const;
    bool hasTitleView() const { return titleView().view != nullptr; }
    ViewHandle rightItem() const;
    bool hasRightItem() const { return rightItem().view != nullptr; }
    /// What the right-hand item is called, for those who cannot see it.
    QString rightItemName() const;
    ViewHandle header() const;
    QString headerText() const;

    int place() const { return _place; }
    bool isAnimated() const { return _isAnimated; }
    void setPlace(Place place, bool animated);

    /// The room that the page has from here on, in points.
    void resize(double width, double height);

    /// The keyboard is to be on the page.
    Q_INVOKABLE void takeKeys() { emit keysWanted(); }

    /// The page has left the stack. It is still drawn on its way out, and does nothing else.
    void letGo();

    Q_INVOKABLE void touchRightItem();
    /// The menu of the row on this line of the table, at this place in the window.
    Q_INVOKABLE void openRowMenu(int line, QPointF place) { emit rowMenuAsked(line, place); }
    /// Loads the page's rows again.
    void reload();
    /// So much has been typed of an application's name, on a page that lists them.
    Q_INVOKABLE void type(const QString& typed);

signals:
    void headerChanged();
    void placeChanged();
    void keysWanted();
    void rowMenuAsked(int line, QPointF place);
    /// The user has been led to the row on this line of the table.
    void rowWanted(int line);

private:
    std::shared_ptr<platform::UIView> headerView() const;

    std::shared_ptr<platform::UIViewController> _controller;
    int _depth;
    QString _backTitle;
    std::unique_ptr<TableModel> _table;
    int _headerRevision = 0;
    Place _place = Away;
    bool _isAnimated = false;
    bool _isGone = false;
};

}  // namespace hosts::desktop
