// SPDX-License-Identifier: MIT
#include "tests/kit/child_process.h"
#include "tests/kit/expectations.h"
#include "tests/kit/temporary_folder.h"

namespace {

using namespace kit;
using testing::HasSubstr;

TEST(Installed, programFindsItsPartsWhereItIsInstalled) {
    const TemporaryFolder folder;
    const std::string prefix = folder / "prefix";
    ChildProcess install({TEST_CMAKE, "--install", TEST_BUILD, "--prefix", prefix});
    ASSERT_EQ(install.finish().status, 0);

    const auto run = [&folder](const std::vector<std::string>& command) {
        return ChildProcess(command, {{"PATH", "/usr/bin:/bin"}, {"HOME", folder.path()}, {"LC_ALL", "C.UTF-8"}})
            .finish();
    };
    const std::string program = prefix + "/bin/trivel3ctl";
    EXPECT_THAT(run({"/usr/bin/ldd", program}).output, HasSubstr(prefix + "/"));
    // The pane's bundle, and the sample phone of a new user.
    const Outcome page = run({program, "show"});
    expectDone(page);
    EXPECT_THAT(page.output, HasSubstr("Trivel 3"));
    EXPECT_EQ(run({program, "get", "HotCorners"}).output, "true\n");
    // A module that is loaded when it is needed: it alone knows that nothing can be said of this terminal.
    const Outcome screen = run({"/usr/bin/script", "--quiet", "--return", "--command", program, "/dev/null"});
    EXPECT_THAT(screen.output, HasSubstr("TERM is not set"));
}

}  // namespace
