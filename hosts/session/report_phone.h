// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "hosts/phones/phone.h"
#include "hosts/session/support_report.h"

namespace hosts {

/// A customer's phone as far as its support report tells of it: the settings, the answers about the device and the list
/// of packages. Applications are those that the settings tick, by their identifiers, and there are no exceptions. What
/// is changed stays in memory, and nobody is notified.
class ReportPhone : public Phone {
public:
    /// Takes back all that was changed.
    virtual void forgetChanges() = 0;
    /// Whether somebody has asked what applications there are, which the report cannot tell.
    virtual bool wasAskedForApplications() const = 0;
};

/// `name` is the path of the file that the report was in, or what it is called.
std::unique_ptr<ReportPhone> openReport(const SupportReport& report, const std::string& name);

}  // namespace hosts
