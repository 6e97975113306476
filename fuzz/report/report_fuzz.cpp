// SPDX-License-Identifier: MIT
// Any bytes as a support report, or as an e-mail that may hold one: all pages of what opens are shown.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz/require.h"
#include "hosts/app_list/application_list.h"
#include "hosts/session/composers.h"
#include "hosts/session/device_shape.h"
#include "hosts/session/page_snapshot.h"
#include "hosts/session/report_phone.h"
#include "hosts/session/services.h"
#include "hosts/session/support_report.h"
#include "platform/list/list_controller.h"
#include "platform/services/platform.h"

// The pane's own entry, linked into the program.
extern "C" platform::RegisterClasses trivel3RegisterClasses;

namespace {

using hosts::PageSnapshot;
using platform::ALApplicationList;

std::shared_ptr<platform::Object> makeApplicationList(platform::Platform& platform) {
    return std::make_shared<hosts::InstalledApplicationList>(platform);
}

constexpr const char* noReportInMessage = "it is an e-mail that holds no support report";

/// A report's phone, at which somebody looks.
class ShownReport {
public:
    explicit ShownReport(const hosts::SupportReport& report)
        : _phone(hosts::openReport(report, "fuzzed")),
          _services{_phone->files(),
                    _phone->notifications(),
                    _classes,
                    _system,
                    _application,
                    _phone->device(),
                    _composers,
                    _composers,
                    shapeOf(*_phone).device,
                    shapeOf(*_phone).screen} {
        trivel3RegisterClasses(_classes);
        _classes.add({ALApplicationList::className, makeApplicationList, {}});
    }

    void showEveryPage() {
        auto root = _classes.make<platform::UIViewController>("KavixPreferencesController", _services);
        fuzz::require(root != nullptr, "there is a root page");
        _navigation.pushViewController_animated(std::move(root), false);
        showPages();
        fuzz::require(_pages > 1, "the root page leads on");
    }

private:
    static const hosts::DeviceShape& shapeOf(hosts::Phone& phone) {
        const auto model = phone.device().copyAnswer("ProductType");
        const auto* shape = hosts::shapeOfModel(model && model->string() ? *model->string() : std::string());
        return shape ? *shape : hosts::usualDeviceShape();
    }

    void showPages() {
        const auto page = _navigation.topViewController();
        ++_pages;
        const PageSnapshot snapshot = PageSnapshot::of(*page);
        for (const auto& section : snapshot.sections) {
            for (const auto& row : section.rows)
                fuzz::require(row.cell != nullptr, "a row has a cell");
        }
        auto* const list = dynamic_cast<platform::PSListController*>(page.get());
        const auto rows = list ? list->specifiers() : platform::PSListController::Specifiers();
        for (const auto& row : rows) {
            if (row->cellType() != platform::PSCellType::link || !list->openDetailPage(row)) continue;
            showPages();
            fuzz::require(_navigation.popViewControllerAnimated(false), "a page that was opened is left");
        }
    }

    std::unique_ptr<hosts::ReportPhone> _phone;
    hosts::QuietApplication _application;
    hosts::Composers _composers;
    platform::ClassRegistry _classes;
    platform::SystemImage _system{"/no/system/image", _classes};
    platform::Platform _services;
    hosts::QuietScreen _screen;
    platform::UINavigationController _navigation{_screen};
    std::size_t _pages = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto report = hosts::readSupportReport(bytes, FUZZED_MODULES "/libtrivel3mail.so");
    if (report) {
        ShownReport(*report).showEveryPage();
    } else {
        const std::string why = report.error().text();
        fuzz::require(why.starts_with("it is no support report") || why.starts_with(noReportInMessage),
                      "what is wrong is told");
        fuzz::require(why.find('\n') == std::string::npos, "it is one line");
    }
    return 0;
}
