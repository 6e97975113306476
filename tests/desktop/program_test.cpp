// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <filesystem>

#include "tests/kit/temporary_folder.h"

namespace desktop_tests {
namespace {

constexpr int patience = 60000;  // ms

/// The real program, with a home of its own.
class Program : public testing::Test {
protected:
    Program() : phone(QString::fromStdString(folder.path() / "phone")) {
        std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, phone.toStdString(), std::filesystem::copy_options::recursive);
        std::filesystem::create_directories(folder.path() / "run");
        std::filesystem::permissions(folder.path() / "run", std::filesystem::perms::owner_all);
        environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", QString::fromStdString(folder.path()));
        environment.insert("XDG_RUNTIME_DIR", QString::fromStdString(folder.path() / "run"));
        environment.insert("XDG_CONFIG_HOME", QString::fromStdString(folder.path() / "config"));
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("QT_QUICK_BACKEND", "software");
        environment.remove("DBUS_SESSION_BUS_ADDRESS");
        environment.remove("TRIVEL3_PHONE");
    }

    struct Result {
        int status;
        QString output;
        QString errors;
    };

    void start(QProcess& process, const QStringList& arguments) {
        process.setProcessEnvironment(environment);
        process.start(TRIVEL3_PROGRAM, arguments);
    }

    Result run(const QStringList& arguments) {
        QProcess process;
        start(process, arguments);
        EXPECT_TRUE(process.waitForFinished(patience));
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    bool isListening() {
        return !QDir(QString::fromStdString(folder.path() / "run")).entryList(QDir::System).isEmpty();
    }

    kit::TemporaryFolder folder;
    QString phone;
    QProcessEnvironment environment;
};

// Whether a picture shows more than one colour.
bool isDrawn(const QImage& image) {
    for (int y = 0; y < image.height(); y += 7) {
        if (image.pixel(image.width() / 3, y) != image.pixel(0, 0)) return true;
    }
    return false;
}

}  // namespace

TEST_F(Program, tellsItsVersionAndItsOptions) {
    const Result version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.output.startsWith("trivel3-settings ")) << version.output.toStdString();
    const Result help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--phone", "--device", "--appearance", "--screenshots", "--verbose"})
        EXPECT_TRUE(help.output.contains(option)) << option;
}

TEST_F(Program, refusesAWrongCommandLine) {
    for (const QStringList& arguments :
         {QStringList{"--device", "toaster"}, QStringList{"--appearance", "pink"}, QStringList{"--nonsense"}}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.errors.startsWith("trivel3-settings: ")) << result.errors.toStdString();
        EXPECT_EQ(result.errors.count('\n'), 1) << result.errors.toStdString();
    }
}

TEST_F(Program, saysThatThereIsNoSuchPhone) {
    const Result result = run({"--phone", phone + "-not"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(phone + "-not")) << result.errors.toStdString();
}

TEST_F(Program, drawsEveryPageInTheDevicesSize) {
    const QString pictures = QString::fromStdString(folder.path() / "pictures");
    const Result result = run({"--phone", phone, "--screenshots", pictures});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    const QStringList files = QDir(pictures).entryList({"*.png"});
    for (const char* name :
         {"trivel-3.png", "trivel-3-mail.png", "trivel-3-post.png", "trivel-3-the-creators.png",
          "trivel-3-advanced-options.png", "trivel-3-advanced-options-slider-actions.png",
          "trivel-3-advanced-options-quick-launcher.png", "trivel-3-advanced-options-album-artwork.png",
          "trivel-3-advanced-options-close-all-apps.png", "trivel-3-advanced-options-disable-in-applications.png"})
        EXPECT_TRUE(files.contains(name)) << name << " of " << files.join(u' ').toStdString();
    for (const QString& file : files) {
        const QImage image(pictures + u'/' + file);
        EXPECT_EQ(image.size(), QSize(640, 1136)) << file.toStdString();
        EXPECT_TRUE(isDrawn(image)) << file.toStdString();
    }
}

TEST_F(Program, drawsAtTheScaleOfTheDevice) {
    const QString pictures = QString::fromStdString(folder.path() / "pictures");
    ASSERT_EQ(run({"--phone", phone, "--device", "phone-5.5", "--screenshots", pictures}).status, 0);
    EXPECT_EQ(QImage(pictures + "/trivel-3.png").size(), QSize(414 * 3, 736 * 3));
}

TEST_F(Program, leavesThePhoneAloneWhileItDraws) {
    const QString pictures = QString::fromStdString(folder.path() / "pictures");
    ASSERT_EQ(run({"--phone", phone, "--screenshots", pictures}).status, 0);
    EXPECT_FALSE(QFile::exists(phone + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist"));
}

TEST_F(Program, saysWhatItPassesOverOnlyWhenAsked) {
    const std::string root = phone.toStdString();
    const std::string settings = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
    std::filesystem::create_directories((root + settings).substr(0, (root + settings).rfind('/')));
    ASSERT_EQ(::mkfifo((root + settings).c_str(), 0644), 0);
    std::filesystem::create_directories(root + "/Applications/Evil\x1b[2J.app");
    const QString pictures = phone + "-pictures";
    EXPECT_EQ(run({"--phone", phone, "--screenshots", pictures}).errors, "");
    const QString errors = run({"--phone", phone, "--screenshots", pictures, "--verbose"}).errors;
    EXPECT_EQ(errors.toStdString(), "trivel3-settings: skipped " + settings +
                                        ": it is a FIFO, not a regular file\n"
                                        "trivel3-settings: skipped /Applications/Evil\uFFFD[2J.app: it has no "
                                        "Info.plist that can be read\n");
}

TEST_F(Program, saysThatPicturesCannotBeWritten) {
    const Result result = run({"--phone", phone, "--screenshots", "/proc/no-such-folder"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains("/proc/no-such-folder")) << result.errors.toStdString();
}

TEST_F(Program, runsOnceForEachPhone) {
    QProcess first;
    start(first, {"--phone", phone});
    ASSERT_TRUE(QTest::qWaitFor([this] { return isListening(); }, patience));
    // Reached by another path, it is the same phone.
    EXPECT_EQ(run({"--phone", phone + "/../phone/"}).status, 0);
    EXPECT_EQ(first.state(), QProcess::Running);
    first.terminate();
    EXPECT_TRUE(first.waitForFinished(patience));
}

TEST_F(Program, endsInGoodOrderWhenItIsAskedTo) {
    QProcess process;
    start(process, {"--phone", phone});
    ASSERT_TRUE(QTest::qWaitFor([this] { return isListening(); }, patience));
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(folder.path() / "config/trivel3/trivel3-settings.ini")))
        << "the window is remembered";
}

}  // namespace desktop_tests
