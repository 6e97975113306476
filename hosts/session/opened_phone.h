// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hosts/phones/phone.h"
#include "hosts/session/change_recorder.h"
#include "hosts/session/installation.h"
#include "hosts/session/outcomes.h"
#include "hosts/session/phone_options.h"

namespace hosts {

/// What a program works on: the installation that it belongs to, and the phone that the user has named.
struct OpenedPhone {
    Installation installation;
    std::unique_ptr<Phone> phone;
    /// Told of what cannot be used on the phone.
    std::unique_ptr<Outcomes> outcomes;
    /// What is changed on the phone.
    std::unique_ptr<PhoneHistory> history;
    const DeviceShape& shape;
    /// Whether it is the default one, a copy of the sample phone: no device is affected by what is changed there.
    bool isSample = false;
    /// Whether it is a support report: the programs say so, each in its own way. What is changed of one are tries,
    /// which nobody is told of; of applications it names those that the settings tick, and it tells no exceptions.
    bool isReport = false;
    /// Who is asked while the phone is waited for; null for one that is near.
    std::shared_ptr<Waiting> waiting = {};
    /// What goes when it is closed.
    std::shared_ptr<void> passing = {};

    /// Opens the phone that the options name, or makes the default one on its first use. A folder that was a mount when
    /// it was last opened, and is none now, is a problem unless the options say otherwise, and so is a list of device
    /// information that is none. `program` is the name that lines on standard error begin with.
    static platform::Result<OpenedPhone> open(const PhoneOptions& options, std::string program);

    /// The same, or the support report that is named in the phone's place, by itself or in an e-mail: a file, or "-"
    /// for standard input. What is changed of it, and its history, is gone with the object, and its shape is the
    /// customer's device's unless the options name one.
    static platform::Result<OpenedPhone> openPhoneOrReport(const PhoneOptions& options, std::string program);

    /// Opens the phone to look at it alone, for those who say nothing to the user: nothing is made or remembered of it.
    /// In place of a default phone that has not been made stands the sample.
    static platform::Result<OpenedPhone> openToLook(const PhoneOptions& options);

    /// Takes back all that was changed of a support report, as if it had been opened anew. A problem where the history
    /// of it stays, or it is no report.
    platform::Result<platform::Done> forgetTries();
    /// Whether it is a support report, and what applications there are has been asked.
    bool lacksApplications() const;
};

/// Whether that name of a phone is a support report's: a file, or "-".
bool namesReport(const std::string& named);

/// What people call the phone: the device's own name, where it tells one, else its folder's. It may hold any bytes.
std::string nameOf(OpenedPhone& opened);

}  // namespace hosts
