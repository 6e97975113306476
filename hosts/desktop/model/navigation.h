// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QSizeF>
#include <QStringList>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "hosts/desktop/model/banners.h"
#include "hosts/desktop/model/commands.h"
#include "hosts/desktop/model/composer.h"
#include "hosts/desktop/model/find.h"
#include "hosts/desktop/model/menu.h"
#include "hosts/desktop/model/page.h"
#include "hosts/desktop/model/phones.h"
#include "platform/ui/navigation_controller.h"

namespace hosts::desktop {

/// The stack of pages as it is drawn, with what is presented over it. A page that has been popped
/// stays in the model until it has been seen to leave.
class Navigation : public QAbstractListModel, public platform::NavigationHost {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program has the navigation")
    Q_PROPERTY(hosts::desktop::Page* current READ current NOTIFY currentChanged)
    /// The page that the others are come by from.
    Q_PROPERTY(hosts::desktop::Page* first READ first NOTIFY currentChanged)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY currentChanged)
    /// Whether the first page stays in view, to the left of the one that is open.
    Q_PROPERTY(bool sideBySide READ isSideBySide NOTIFY sideBySideChanged)
    Q_PROPERTY(hosts::desktop::Composer* composer READ composer NOTIFY composerChanged)
    /// False as soon as the composer is on its way out.
    Q_PROPERTY(bool composerShown READ isComposerShown NOTIFY composerShownChanged)
    Q_PROPERTY(bool composerAnimated READ isComposerAnimated NOTIFY composerShownChanged)
    Q_PROPERTY(hosts::desktop::Banners* banners READ bannersForQml CONSTANT)
    Q_PROPERTY(hosts::desktop::Find* find READ findForQml CONSTANT)
    Q_PROPERTY(hosts::desktop::Menu* menu READ menuForQml CONSTANT)
    Q_PROPERTY(hosts::desktop::Commands* commands READ commandsForQml CONSTANT)
    Q_PROPERTY(hosts::desktop::Phones* phones READ phonesForQml CONSTANT)

public:
    enum Role { PageRole = Qt::UserRole };

    /// `handOver` outlives the navigation.
    explicit Navigation(HandOver& handOver);
    ~Navigation() override;

    /// Opens the first page.
    void open(std::shared_ptr<platform::UIViewController> root);

    /// Opens the page that titles lead to from the first page, with "/" between them, whichever is open now. The
    /// problem, where one of them leads to no page, is one line.
    platform::Result<platform::Done> openPath(std::string_view path);

    /// By which the rows of pages that open from here on say that they are changed. They outlive the navigation.
    void useDefaults(const Defaults* defaults) { _defaults = defaults; }
    /// Puts settings back to their defaults; `label` is what the user calls them, empty for all of a page's.
    using Reset = std::function<void(const std::vector<std::string>& keys, const std::string& label)>;
    using CanReset = std::function<bool(const std::vector<std::string>& keys)>;
    /// From here on settings are reset so.
    void useReset(Reset reset, CanReset canReset);
    /// From here on, what the user looks for is found by the finder, which outlives the navigation.
    void useFinder(Finder& finder);
    /// Opens the hit's page, with the keyboard on its row.
    void goTo(const FindHit& hit);

    /// Opens the pages below the first that the titles name, as far as links lead there.
    void follow(const QStringList& titles);
    /// The titles of the pages below the first.
    QStringList path() const;

    /// Null before the first page.
    Page* current() const { return _stack.empty() ? nullptr : _stack.back().get(); }
    Page* first() const { return _stack.empty() ? nullptr : _stack.front().get(); }
    bool isSideBySide() const { return _isSideBySide; }
    /// Those that are in view and take keys, from left to right.
    std::vector<Page*> seenPages() const;
    bool canGoBack() const { return _stack.size() > 1; }
    Composer* composer() const { return _composer.get(); }
    bool isComposerShown() const { return _isComposerShown; }
    bool isComposerAnimated() const { return _isComposerAnimated; }
    Banners& banners() { return _banners; }
    Find& find() { return _find; }
    Phones& phones() { return _phones; }
    Menu& menu() { return _menu; }
    Commands& commands() { return _commands; }

    /// Opens the window's menu, at this place in it.
    Q_INVOKABLE void openMenu(QPointF place);

    /// The room that the first page has, and that the others have, in points; and whether it stays in view beside them.
    Q_INVOKABLE void layOut(QSizeF first, QSizeF others, bool sideBySide);

    /// What the pages show may have changed on disk.
    void redrawVisibleRows();

    /// What the user has done last to a row of a page that is still seen.
    struct Act {
        /// Null where that is nothing; else to be told from others alone.
        const Page* page = nullptr;
        /// Does it once more, as the user would. False where the row is no longer there, with nothing done. To be
        /// called while the navigation is there.
        std::function<bool()> again;
    };
    /// Since this was last asked.
    Act takeAct();

    /// Something for the user to read, over whatever page or composer is seen.
    void tell(Banner banner) { _banners.tell(std::move(banner)); }

    /// Whether the window may close. If not, the user has been asked, and `closeAgreed` may follow.
    bool mayClose() { return !_isComposerShown || _composer->mayClose(); }

    Q_INVOKABLE bool back();
    /// A popped page has been seen to leave, or a dismissed composer.
    Q_INVOKABLE void pageLeft(hosts::desktop::Page* page);
    Q_INVOKABLE void composerLeft();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void didPush(platform::UIViewController& page, bool animated) override;
    void didPop(platform::UIViewController& page, platform::UIViewController& gone, bool animated) override;
    void didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) override;
    void didDismiss(bool animated) override;

signals:
    /// The user has done something to a row.
    void acted();
    /// The user wants the window's menu.
    void menuAsked();
    void currentChanged();
    void sideBySideChanged();
    void composerChanged();
    void composerShownChanged();
    /// The window may close now.
    void closeAgreed();

private:
    Banners* bannersForQml() { return &_banners; }
    Find* findForQml() { return &_find; }
    Phones* phonesForQml() { return &_phones; }
    Menu* menuForQml() { return &_menu; }
    Commands* commandsForQml() { return &_commands; }
    void takeOnCommands();
    void openRowMenu(int line, QPointF place);
    std::vector<std::string> settingsOfPage() const;
    std::vector<std::string> titles() const;
    void tellOutcome(const ComposerOutcome& outcome);
    void publishLater();
    void publish();
    void publishNewPages();
    void moveToPlaces();
    bool isSeen(const Page* page) const;
    void giveRoom(Page& page) const;
    bool comeBackTo(const Page* page, const platform::PSSpecifier& link);
    void markOpenPage();
    bool isShown(const Page* page) const;
    void forget(const Page* page);

    HandOver& _handOver;
    const Defaults* _defaults = nullptr;
    QSizeF _firstSize;
    QSizeF _otherSize;
    bool _isSideBySide = false;
    /// The stack as the pages have made it, and the pages that are on their way out.
    std::vector<std::shared_ptr<Page>> _stack;
    std::vector<std::shared_ptr<Page>> _leaving;
    /// What is drawn: the model's rows.
    std::vector<std::shared_ptr<Page>> _shown;
    bool _isAnimated = false;
    bool _willPublish = false;
    std::unique_ptr<Composer> _composer;
    bool _isComposerShown = false;
    bool _isComposerAnimated = false;
    Banners _banners;
    Find _find;
    Phones _phones;
    Menu _menu;
    Commands _commands;
    Reset _reset;
    CanReset _canReset;
    /// Last, so that it goes first: pages and composers that it lets go may be drawn until then.
    platform::UINavigationController _controller;
};

}  // namespace hosts::desktop
