// SPDX-License-Identifier: MIT
#include "benchmarks/sample_applications.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "platform/foundation/property_list.h"
#include "tests/kit/png_maker.h"

namespace benchmarks {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;

std::string formatted(const char* form, std::size_t number) {
    char text[64];
    std::snprintf(text, sizeof text, form, number);
    return text;
}

Dictionary launchImage(const char* name, const char* size, const char* orientation) {
    return {{"UILaunchImageMinimumOSVersion", "8.0"},
            {"UILaunchImageName", name},
            {"UILaunchImageOrientation", orientation},
            {"UILaunchImageSize", size}};
}

Array launchImages() {
    return {launchImage("LaunchImage-700", "{320, 480}", "Portrait"),
            launchImage("LaunchImage-700-568h", "{320, 568}", "Portrait"),
            launchImage("LaunchImage-700-Landscape", "{768, 1024}", "Landscape")};
}

Dictionary icons(Array files) {
    return {{"CFBundlePrimaryIcon", Dictionary{{"CFBundleIconFiles", std::move(files)}, {"UIPrerenderedIcon", false}}}};
}

bool hasIcon(std::size_t number) {
    return number % 10 != 3;
}

// What every application of a store says of how it was built and what it needs.
Dictionary commonInfo() {
    return {
        {"BuildMachineOSBuild", "16G29"},
        {"CFBundleDevelopmentRegion", "en"},
        {"CFBundleInfoDictionaryVersion", "6.0"},
        {"CFBundlePackageType", "APPL"},
        {"CFBundleShortVersionString", "4.12.1"},
        {"CFBundleSignature", "????"},
        {"CFBundleSupportedPlatforms", Array{"iPhoneOS"}},
        {"CFBundleVersion", "2017.08.02"},
        {"DTPlatformBuild", "14E269"},
        {"DTPlatformName", "iphoneos"},
        {"DTPlatformVersion", "10.3"},
        {"DTSDKBuild", "14E269"},
        {"DTSDKName", "iphoneos10.3"},
        {"DTXcode", "0833"},
        {"DTXcodeBuild", "8E3004b"},
        {"LSApplicationQueriesSchemes", Array{"http", "https", "mailto", "tel"}},
        {"LSRequiresIPhoneOS", true},
        {"MinimumOSVersion", "8.0"},
        {"NSCameraUsageDescription", "Take a picture of your ticket and it is read for you."},
        {"NSLocationWhenInUseUsageDescription", "What is near you is shown first when we know where you are."},
        {"UIAppFonts", Array{"Inter-Regular.ttf", "Inter-Bold.ttf", "Symbols.ttf"}},
        {"UIBackgroundModes", Array{"fetch", "remote-notification"}},
        {"UIDeviceFamily", Array{1, 2}},
        {"UILaunchImages", launchImages()},
        {"UILaunchStoryboardName", "LaunchScreen"},
        {"UIMainStoryboardFile", "Main"},
        {"UIRequiredDeviceCapabilities", Array{"armv7"}},
        {"UISupportedInterfaceOrientations", Array{"UIInterfaceOrientationPortrait"}},
        {"UISupportedInterfaceOrientations~ipad",
         Array{"UIInterfaceOrientationPortrait", "UIInterfaceOrientationPortraitUpsideDown",
               "UIInterfaceOrientationLandscapeLeft", "UIInterfaceOrientationLandscapeRight"}},
    };
}

Dictionary infoOf(std::size_t number) {
    static const Dictionary common = commonInfo();
    Dictionary info = common;
    const std::string name = formatted("Sample%05zu", number);
    info.set("CFBundleDisplayName", Value(formatted("Sample %zu", number)));
    info.set("CFBundleExecutable", Value(name));
    info.set("CFBundleIdentifier", Value(sampleIdentifier(number)));
    info.set("CFBundleName", Value(name));
    info.set("CFBundleURLTypes", Array{Dictionary{{"CFBundleTypeRole", "Editor"},
                                                  {"CFBundleURLName", Value(sampleIdentifier(number))},
                                                  {"CFBundleURLSchemes", Array{Value(name)}}}});
    if (hasIcon(number)) {
        info.set("CFBundleIcons", icons({"AppIcon29x29", "AppIcon40x40", "AppIcon60x60"}));
        info.set("CFBundleIcons~ipad",
                 icons({"AppIcon29x29", "AppIcon40x40", "AppIcon60x60", "AppIcon76x76", "AppIcon83.5x83.5"}));
    }
    return info;
}

std::string infoBytes(std::size_t number) {
    const Value info(infoOf(number));
    return number % 2 == 0 ? *platform::writeXmlPropertyList(info).bytes
                           : *platform::writeBinaryPropertyList(info).bytes;
}

std::string englishBytes(std::size_t number) {
    const std::string name = formatted("Sample %zu", number);
    if (number % 4 == 0) return "/* Names */\n\"CFBundleDisplayName\" = \"" + name + "\";\n";
    return *platform::writeBinaryPropertyList(Dictionary{{"CFBundleDisplayName", Value(name)}}).bytes;
}

// A disc on a square of other colours, which run as far as the square does; opaque, as icons are.
hosts::Picture drawIcon(std::uint32_t side) {
    hosts::Picture picture{side, side, {}};
    for (std::uint32_t row = 0; row < side; ++row) {
        for (std::uint32_t column = 0; column < side; ++column) {
            const std::int64_t x = 2 * std::int64_t{column} - side;
            const std::int64_t y = 2 * std::int64_t{row} - side;
            const bool isInDisc = 2 * (x * x + y * y) < std::int64_t{side} * side;
            for (const std::uint32_t shade : {column, row, isInDisc ? side - column : row})
                picture.rgba.push_back(static_cast<std::uint8_t>(shade * 255 / side));
            picture.rgba.push_back(255);
        }
    }
    return picture;
}

/// An icon's file in both forms.
struct IconFiles {
    explicit IconFiles(std::uint32_t side)
        : ordinary(kit::encodePng(drawIcon(side))), optimised(kit::encodeOptimisedPng(drawIcon(side))) {}

    const std::string& form(std::size_t number) const { return number % 2 == 0 ? ordinary : optimised; }

    std::string ordinary;
    std::string optimised;
};

void put(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary);
    if (!stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
        throw std::runtime_error(file.string() + ": cannot be written");
    }
}

void putIcons(const std::filesystem::path& application, std::size_t number) {
    static const IconFiles large(120);
    static const IconFiles fitting(58);
    if (!hasIcon(number)) return;
    put(application / "AppIcon60x60@2x.png", large.form(number));
    if (number % 3 != 0) put(application / "AppIcon29x29@2x.png", fitting.form(number));
}

// Folders of the user's applications bear random names: here ones that come in no order.
std::string folderOf(std::size_t number) {
    const std::string name = formatted("Sample%05zu.app", number);
    if (number % 20 == 0) return "Applications/" + name;
    const std::string random = formatted("%08zX-0000-4000-8000-", number * 2654435761U % 0x100000000U);
    return "var/mobile/Containers/Bundle/Application/" + random + formatted("%012zX", number) + "/" + name;
}

}  // namespace

std::string sampleIdentifier(std::size_t number) {
    return formatted("com.example.app%05zu", number);
}

void installSampleApplications(const std::string& phone, std::size_t count) {
    for (std::size_t number = 0; number < count; ++number) {
        const std::filesystem::path folder = std::filesystem::path(phone) / folderOf(number);
        std::filesystem::create_directories(folder);
        put(folder / "Info.plist", infoBytes(number));
        putIcons(folder, number);
        if (number / 2 % 2 != 0) continue;
        std::filesystem::create_directory(folder / "en.lproj");
        put(folder / "en.lproj" / "InfoPlist.strings", englishBytes(number));
    }
}

}  // namespace benchmarks
