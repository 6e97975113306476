// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "hosts/desktop/model/phones.h"
#include "hosts/desktop/program/folder_chooser.h"
#include "hosts/desktop/program/options.h"
#include "hosts/session/opened_phone.h"

namespace hosts::desktop {

/// As the page of phones knows the phone.
KnownPhone knownAs(OpenedPhone& opened);

/// Opens phones, each in a window and a process of its own, and remembers which ones.
class PhoneOpener : public QObject {
    Q_OBJECT

public:
    /// `options` are those of this window, which others follow as far as they are no phone's own.
    explicit PhoneOpener(Options options) : _options(std::move(options)) {}

    /// The phone of this window is remembered, and `phones` opens others. The window and `phones` outlive the opener.
    void serve(Phones& phones, QWindow& window, OpenedPhone& current);

    /// Opens a window on the folder, on the support report that the file is, or on the phone that is reached by that
    /// address; empty for the sample phone. The problem, when there is no phone to be opened there, is one line. Of a
    /// phone that is reached by its address the new window tells it.
    platform::Result<platform::Done> open(const QString& phone);

private:
    std::vector<KnownPhone> known() const;
    void remember(const KnownPhone& phone) const;
    platform::Result<QStringList> argumentsFor(const QString& phone) const;

    Options _options;
    FolderChooser _chooser;
};

}  // namespace hosts::desktop
