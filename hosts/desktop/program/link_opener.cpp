// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/link_opener.h"

#include <QClipboard>
#include <QGuiApplication>

#include "hosts/session/printable.h"

namespace hosts::desktop {

bool LinkOpener::openURL(std::string_view url) {
    const auto opened = _opener.open(url);
    if (_banners) opened ? _banners->withdraw(Banner::About::link) : tellUnopened(url, opened.error());
    return opened.has_value();
}

// The user can still go there by another way.
void LinkOpener::tellUnopened(std::string_view url, const platform::Problem& problem) {
    const QString address = QString::fromUtf8(url.data(), static_cast<qsizetype>(url.size()));
    const std::string text = "Not opened: " + std::string(url) + " (" + problem.text() + ")";
    _banners->tell({.about = Banner::About::link,
                    .text = QString::fromStdString(printable(text)),
                    .isProblem = true,
                    .action = QStringLiteral("Copy address"),
                    .act = [address] { QGuiApplication::clipboard()->setText(address); }});
}

}  // namespace hosts::desktop
