// SPDX-License-Identifier: MIT
#include "pages/application_page_controller.h"
#include "store/exceptions_file.h"

namespace trivel3 {

/// The applications in which the hot corners are off. Their ticks are a file of its own, with a
/// notification of its own.
class KavixPreferencesExceptionsController final : public KavixPreferencesApplicationPageController {
public:
    using KavixPreferencesApplicationPageController::KavixPreferencesApplicationPageController;
    static constexpr const char* registeredName = "KavixPreferencesExceptionsController";
    const char* className() const override { return registeredName; }

protected:
    bool isTicked(const std::string& identifier) override { return exceptions::isTicked(platform(), identifier); }

    void setTicked(bool ticked, const std::string& identifier) override {
        exceptions::change(platform(), [ticked, identifier](platform::Dictionary ticks) {
            ticks.set(identifier, ticked);
            return ticks;
        });
    }
};

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesExceptionsController>(ClassRegistry& classes);
