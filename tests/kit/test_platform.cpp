// SPDX-License-Identifier: MIT
#include "tests/kit/test_platform.h"

#include <utility>

namespace kit {

std::string stagedSystemImage() {
    return TRIVEL3_TEST_SYSTEM_IMAGE;
}

TestPlatform::TestPlatform(Shape shape, std::string systemImage)
    : phone(log),
      notifications(log),
      system(std::move(systemImage), classes),
      application(log),
      _services{phone,       notifications, classes, system,        application,
                deviceQuery, mail,          posts,   {shape.idiom}, {{0, 0, shape.width, shape.height}, shape.scale}},
      screen(_services, log) {}

}  // namespace kit
