// SPDX-License-Identifier: MIT
#include "store/preference_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"

namespace store_test {
namespace {

using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;
using trivel3::PreferenceStore;
namespace event = kit::event;

constexpr std::string_view file = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
constexpr auto changed = "com.fenwary.trivel3.preferencesChanged";

class Store : public testing::Test {
protected:
    Value fileValue() const {
        auto content = host.phone.dictionary(file);
        return content ? Value(*std::move(content)) : Value();
    }

    kit::TestPlatform host;
    PreferenceStore store{host.services()};
};

TEST_F(Store, readsTheDefaultsWithoutAFile) {
    EXPECT_EQ(store.preferenceForKey("MultiCenter"), Value(true));
    EXPECT_EQ(store.preferenceForKey("MinimalControlCenterCondition"), Value(1));
    EXPECT_EQ(store.preferenceForKey("AlbumArtworkAutoDisplay"), Value(6));
    EXPECT_EQ(store.preferenceForKey("CloseAllAppsExceptions"), Value(Dictionary()));
    EXPECT_EQ(store.preferenceForKey("DisableWithKeyboard"), Value(false));
    EXPECT_EQ(store.preferenceForKey("OpenToLastAppWithQS"), std::nullopt);
    EXPECT_EQ(host.phone.dictionary(file), std::nullopt);
}

TEST_F(Store, prefersWhatIsStoredEvenWhenItIsFalseOrZero) {
    host.phone.put(file, Dictionary{{"MultiCenter", false}, {"AlbumArtworkAutoDisplay", 0}});
    EXPECT_EQ(store.preferenceForKey("MultiCenter"), Value(false));
    EXPECT_EQ(store.preferenceForKey("AlbumArtworkAutoDisplay"), Value(0));
    EXPECT_EQ(store.preferenceForKey("QuickSwitcher"), Value(true));
}

TEST_F(Store, returnsWhatIsStoredOfWhateverKind) {
    const Value odd[] = {1,
                         2.5,
                         "text",
                         platform::Data{std::byte{7}},
                         platform::Date{1},
                         platform::Array{true},
                         Dictionary{{"a", "b"}},
                         UINT64_MAX};
    for (const Value& value : odd) {
        host.phone.put(file, Dictionary{{"MultiCenter", value}, {"Unknown", value}});
        EXPECT_EQ(store.preferenceForKey("MultiCenter"), value);
        EXPECT_EQ(store.preferenceForKey("Unknown"), value);
    }
}

TEST_F(Store, comparesKeysExactly) {
    host.phone.put(file, Dictionary{{"MultiCenter", false}});
    for (const char* key : {"multicenter", "MULTICENTER", "MultiCente", "MultiCenterX", " MultiCenter", ""}) {
        EXPECT_EQ(store.preferenceForKey(key), std::nullopt) << key;
    }
}

TEST_F(Store, readsBinaryFilesToo) {
    host.phone.put(
        file, std::string_view(platform::writeBinaryPropertyList(Dictionary{{"HotCorners", false}}).bytes.value()));
    EXPECT_EQ(store.preferenceForKey("HotCorners"), Value(false));
}

TEST_F(Store, readsTheFileAnewEachTime) {
    for (const bool value : {false, true, false}) {
        host.phone.put(file, Dictionary{{"HotCorners", value}});
        EXPECT_EQ(store.preferenceForKey("HotCorners"), Value(value));
    }
    EXPECT_EQ(host.phone.takeReads(file), 3u);
    host.phone.remove(file);
    EXPECT_EQ(store.preferenceForKey("HotCorners"), Value(true));
}

TEST_F(Store, makesAFileThatHoldsJustTheFirstSetting) {
    store.setPreferenceForKey(false, "HotCorners");
    EXPECT_EQ(fileValue(), (Dictionary{{"HotCorners", false}}));
    EXPECT_THAT(host.log.take(), ElementsAre(event::write(std::string(file)), event::notification(changed)));
}

TEST_F(Store, leavesTheOtherKeysAsTheyAre) {
    const Dictionary before{{"MultiCenter", false},
                            {"HotCorners", true},
                            {"AlbumArtworkAutoDisplay", 3},
                            {"Unknown", platform::Array{1, "two", 3.5}},
                            {"CloseAllAppsExceptions", Dictionary{{"com.a", true}, {"com.b", false}}},
                            {"When", platform::Date{1000}}};
    host.phone.put(file, before);
    store.setPreferenceForKey(false, "HotCorners");
    Dictionary after = before;
    after.set("HotCorners", false);
    EXPECT_EQ(fileValue(), after);
}

TEST_F(Store, keepsTheKindOfWhatItWrites) {
    store.setPreferenceForKey(true, "MultiCenter");
    store.setPreferenceForKey(1, "MinimalControlCenterCondition");
    EXPECT_EQ(fileValue(), (Dictionary{{"MultiCenter", true}, {"MinimalControlCenterCondition", 1}}));
    EXPECT_NE(fileValue(), (Dictionary{{"MultiCenter", 1}, {"MinimalControlCenterCondition", true}}));
}

TEST_F(Store, writesThePlatformsOwnXml) {
    store.setPreferenceForKey(2, "SliderActionsVolume");
    store.setPreferenceForKey(false, "HotCorners");
    EXPECT_EQ(host.phone.bytes(file),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
              "<plist version=\"1.0\">\n"
              "<dict>\n"
              "\t<key>HotCorners</key>\n"
              "\t<false/>\n"
              "\t<key>SliderActionsVolume</key>\n"
              "\t<integer>2</integer>\n"
              "</dict>\n"
              "</plist>\n");
}

TEST_F(Store, makesABinaryFileXml) {
    host.phone.put(
        file, std::string_view(platform::writeBinaryPropertyList(Dictionary{{"HotCorners", false}}).bytes.value()));
    store.setPreferenceForKey(false, "MultiCenter");
    EXPECT_EQ(fileValue(), (Dictionary{{"HotCorners", false}, {"MultiCenter", false}}));
    EXPECT_THAT(*host.phone.bytes(file), testing::StartsWith("<?xml"));
}

TEST_F(Store, replacesACorruptFileByTheOneSetting) {
    for (const char* bytes :
         {"", "garbage", "<plist><dict><key>MultiCenter</key><false/>", "bplist00", "<plist><array/></plist>"}) {
        host.phone.put(file, std::string_view(bytes));
        EXPECT_EQ(store.preferenceForKey("MultiCenter"), Value(true)) << bytes;
        store.setPreferenceForKey(false, "HotCorners");
        EXPECT_EQ(fileValue(), (Dictionary{{"HotCorners", false}})) << bytes;
    }
}

TEST_F(Store, postsOnceForEachWriteEvenWhenItFails) {
    host.phone.put(file, Dictionary{{"HotCorners", false}});
    host.phone.setWritesFail(true);
    store.setPreferenceForKey(true, "HotCorners");
    EXPECT_THAT(host.log.take(), ElementsAre(event::write(std::string(file), false), event::notification(changed)));
    EXPECT_EQ(store.preferenceForKey("HotCorners"), Value(false));
    EXPECT_EQ(fileValue(), (Dictionary{{"HotCorners", false}}));
}

TEST_F(Store, postsEvenWhatItCannotWriteAsXmlAndKeepsTheFile) {
    host.phone.put(file, Dictionary{{"HotCorners", false}});
    store.setPreferenceForKey(platform::Null(), "HotCorners");
    EXPECT_EQ(host.log.count(kit::Event::Kind::notification), 1u);
    EXPECT_EQ(fileValue(), (Dictionary{{"HotCorners", false}}));
}

TEST_F(Store, leavesNothingElseInTheFolder) {
    store.setPreferenceForKey(true, "HotCorners");
    host.phone.setWritesFail(true);
    store.setPreferenceForKey(false, "HotCorners");
    EXPECT_THAT(*host.phone.listFolder("/var/mobile/Library/Preferences"), ElementsAre("com.fenwary.trivel3.plist"));
}

TEST_F(Store, readsAFolderInTheFilesPlaceAsNoneAndCannotReplaceIt) {
    std::filesystem::create_directory(host.phone.machinePath(file));
    EXPECT_EQ(store.preferenceForKey("MultiCenter"), Value(true));
    store.setPreferenceForKey(false, "MultiCenter");
    EXPECT_THAT(host.log.take(), ElementsAre(event::write(std::string(file), false), event::notification(changed)));
}

TEST_F(Store, waitsForNobodyAtAFifo) {
    ASSERT_EQ(::mkfifo(host.phone.machinePath(file).c_str(), 0644), 0);
    EXPECT_EQ(store.preferenceForKey("MultiCenter"), Value(true));
    store.setPreferenceForKey(false, "MultiCenter");
    EXPECT_EQ(fileValue(), (Dictionary{{"MultiCenter", false}}));
}

TEST_F(Store, tellsWhatTheFileItselfHolds) {
    host.phone.put(file, Dictionary{{"MultiCenter", true}});
    EXPECT_EQ(store.storedValueForKey("MultiCenter"), Value(true));
    EXPECT_EQ(store.storedValueForKey("QuickSwitcher"), std::nullopt);
}

TEST_F(Store, changesAValueByWhatTheFileHoldsAtTheWrite) {
    const auto plusOne = [](std::optional<Value> held) { return Value(platform::integerValue(held) + 1); };
    host.phone.put(file, Dictionary{{"Count", 1}, {"MultiCenter", false}});
    EXPECT_EQ(store.preferenceForKey("Count"), Value(1));
    host.phone.put(file, Dictionary{{"Count", 41}, {"Other", "kept"}});
    store.changePreferenceForKey("Count", plusOne);
    EXPECT_EQ(fileValue(), (Dictionary{{"Count", 42}, {"Other", "kept"}}));
    EXPECT_THAT(host.log.take(), ElementsAre(event::write(std::string(file)), event::notification(changed)));
}

TEST_F(Store, tellsAChangeOfNoDefault) {
    for (const char* bytes : {"", "garbage", "<plist><dict/></plist>"}) {
        host.phone.put(file, std::string_view(bytes));
        store.changePreferenceForKey("MultiCenter", [](std::optional<Value> held) { return Value(held.has_value()); });
        EXPECT_EQ(fileValue(), (Dictionary{{"MultiCenter", false}})) << bytes;
    }
}

TEST_F(Store, takesAKeyOutForAChangeThatGivesNothing) {
    host.phone.put(file, Dictionary{{"CloseAllAppsExceptions", "damaged"}, {"MultiCenter", false}});
    store.changePreferenceForKey("CloseAllAppsExceptions", [](std::optional<Value>) { return std::nullopt; });
    EXPECT_THAT(host.log.take(), ElementsAre(event::write(std::string(file)), event::notification(changed)));
    EXPECT_EQ(fileValue(), (Dictionary{{"MultiCenter", false}}));
}

TEST_F(Store, postsForAChangeThatCouldNotBeWrittenToo) {
    host.phone.setWritesFail(true);
    store.changePreferenceForKey("MultiCenter", [](std::optional<Value>) { return Value(false); });
    EXPECT_THAT(host.log.take(), ElementsAre(event::write(std::string(file), false), event::notification(changed)));
}

TEST(TwoStores, knowNothingOfEachOther) {
    kit::TestPlatform left;
    kit::TestPlatform right;
    PreferenceStore(left.services()).setPreferenceForKey(false, "MultiCenter");
    EXPECT_EQ(PreferenceStore(right.services()).preferenceForKey("MultiCenter"), Value(true));
    EXPECT_THAT(right.log.all(), testing::IsEmpty());
}

TEST(TwoStores, shareAPlatformsFile) {
    kit::TestPlatform host;
    PreferenceStore(host.services()).setPreferenceForKey(false, "MultiCenter");
    EXPECT_EQ(PreferenceStore(host.services()).preferenceForKey("MultiCenter"), Value(false));
}

}  // namespace
}  // namespace store_test
