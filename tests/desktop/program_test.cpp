// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

#include "tests/desktop/real_program.h"

namespace desktop_tests {
namespace {

// Whether a picture shows more than one colour.
bool isDrawn(const QImage& image) {
    for (int y = 0; y < image.height(); y += 7) {
        if (image.pixel(image.width() / 3, y) != image.pixel(0, 0)) return true;
    }
    return false;
}

}  // namespace

class Program : public RealProgram {
protected:
    QString write(const char* name, const QByteArray& contents) {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }
};

TEST_F(Program, tellsItsVersionAndItsOptions) {
    const Result version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.output.startsWith("trivel3-settings ")) << version.output.toStdString();
    const Result help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option :
         {"--phone", "--device", "--device-information", "--appearance", "--screenshots", "--verbose"})
        EXPECT_TRUE(help.output.contains(option)) << option;
}

TEST_F(Program, refusesAWrongCommandLine) {
    for (const QStringList& arguments :
         {QStringList{"--device", "toaster"}, QStringList{"--appearance", "pink"}, QStringList{"--nonsense"},
          QStringList{"--phone", ""}, QStringList{"--device-information", ""}}) {
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
    const QString pictures = pathOf("pictures");
    const Result result = run({"--phone", phone, "--screenshots", pictures});
    EXPECT_EQ(result.status, 0);
    const QStringList files = QDir(pictures).entryList({"*.png"});
    for (const char* name :
         {"trivel-3.png", "trivel-3-mail.png", "trivel-3-post.png", "trivel-3-the-creators.png",
          "trivel-3-advanced-options.png", "trivel-3-advanced-options-slider-actions.png",
          "trivel-3-advanced-options-quick-launcher.png", "trivel-3-advanced-options-album-artwork.png", "find.png",
          "phones.png", "menu.png", "keys.png", "about.png", "row-menu.png",
          "trivel-3-advanced-options-close-all-apps.png", "trivel-3-advanced-options-disable-in-applications.png"})
        EXPECT_TRUE(files.contains(name)) << name << " of " << files.join(u' ').toStdString();
    for (const QString& file : files) {
        const QImage image(pictures + u'/' + file);
        EXPECT_EQ(image.size(), QSize(640, 1136)) << file.toStdString();
        EXPECT_TRUE(isDrawn(image)) << file.toStdString();
    }
}

TEST_F(Program, drawsAtTheScaleOfTheDevice) {
    const QString pictures = pathOf("pictures");
    ASSERT_EQ(run({"--phone", phone, "--device", "phone-5.5", "--screenshots", pictures}).status, 0);
    EXPECT_EQ(QImage(pictures + "/trivel-3.png").size(), QSize(414 * 3, 736 * 3));
}

TEST_F(Program, leavesThePhoneAloneWhileItDraws) {
    const QString pictures = pathOf("pictures");
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

TEST_F(Program, saysWhatIsWrongWithTheFileOfAnswersThatTheUserNames) {
    const QString broken = write("answers.plist", "<plist version=\"1.0\">\n<dict><foo/></dict>\n</plist>");
    for (const QStringList& way : {QStringList{}, QStringList{"--screenshots", pathOf("pictures")}}) {
        const Result result = run(QStringList{"--phone", phone, "--device-information", broken} + way);
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.errors.startsWith("trivel3-settings: " + broken + ":2:")) << result.errors.toStdString();
    }
}

TEST_F(Program, reportsTheAnswersOfTheFileThatTheUserNames) {
    const QString plain = pathOf("plain");
    ASSERT_EQ(run({"--phone", phone, "--screenshots", plain}).status, 0);
    // So long that the attachment's size, which the sheet tells, is another.
    const QString answers = write("answers.plist", "<plist version=\"1.0\"><dict><key>DeviceColor</key><string>" +
                                                       QByteArray(1 << 20, 'x') + "</string></dict></plist>");
    const QString named = pathOf("named");
    ASSERT_EQ(run({"--phone", phone, "--device-information", answers, "--screenshots", named}).status, 0);
    EXPECT_EQ(QImage(plain + "/trivel-3.png"), QImage(named + "/trivel-3.png"));
    EXPECT_NE(QImage(plain + "/trivel-3-mail.png"), QImage(named + "/trivel-3-mail.png"));
}

TEST_F(Program, endsInGoodOrderWhenItIsAskedTo) {
    kit::ChildProcess process(command({"--phone", phone}), environment);
    ASSERT_TRUE(QTest::qWaitFor([this] { return isListening(); }, patience));
    end(process);
    EXPECT_TRUE(QFile::exists(pathOf("config/trivel3/trivel3-settings.ini"))) << "the window is remembered";
}

}  // namespace desktop_tests
