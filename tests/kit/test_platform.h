// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/services/platform.h"
#include "tests/kit/event.h"
#include "tests/kit/screen.h"
#include "tests/kit/test_application.h"
#include "tests/kit/test_composers.h"
#include "tests/kit/test_phone.h"

namespace kit {

/// A phone's shape.
struct Shape {
    int idiom = 0;
    double width = 0;
    double height = 0;
    double scale = 0;
};

inline constexpr Shape shortPhone{0, 320, 480, 2};
inline constexpr Shape tallPhone{0, 320, 568, 2};
inline constexpr Shape widePhone{0, 375, 667, 2};
inline constexpr Shape largePhone{0, 414, 736, 3};
inline constexpr Shape tablet{1, 768, 1024, 2};

/// The folder of the system image that the build has staged: the pane's bundle and all else that is
/// installed.
std::string stagedSystemImage();

/// A whole platform with a phone of its own, on which nothing is installed and no class is known: a
/// test adds what it needs. What the pages do to the outside is in `log`, in order.
class TestPlatform {
public:
    explicit TestPlatform(Shape shape = tallPhone, std::string systemImage = stagedSystemImage());

    /// Adds a class by its own name.
    template <class T>
    void addClass(std::string_view name) {
        classes.add({std::string(name), [](platform::Platform& owner) { return std::make_shared<T>(owner); }});
    }

    EventLog log;
    TestPhone phone;
    TestNotifyCenter notifications;
    platform::ClassRegistry classes;
    platform::SystemImage system;
    TestApplication application;
    TestDeviceQuery deviceQuery;
    TestMailService mail;
    TestPostService posts;

    /// What pages live in, with the device and the screen that a test may change.
    platform::Platform& services() { return _services; }

private:
    platform::Platform _services;

public:
    Screen screen;
};

}  // namespace kit
