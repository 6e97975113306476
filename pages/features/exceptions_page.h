// SPDX-License-Identifier: MIT
#pragma once

#include "pages/application_page_controller.h"

namespace trivel3 {

/// The applications in which the hot corners are off. Their ticks are a file of its own, with a
/// notification of its own.
class KavixPreferencesExceptionsController final : public KavixPreferencesApplicationPageController {
public:
    using KavixPreferencesApplicationPageController::KavixPreferencesApplicationPageController;
    const char* className() const override { return "KavixPreferencesExceptionsController"; }

protected:
    Specifiers buildSpecifiers() override;
    std::size_t firstApplicationSection() const override { return 0; }
    bool isTicked(const std::string& identifier) override;
    void setTicked(bool ticked, const std::string& identifier) override;
};

}  // namespace trivel3
