#include "support/clsRegAccess.h"

#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/LoggedEntries.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using Variant = clsRegAccess::Variant;
using Texts = std::vector<std::string>;

constexpr RegistryRoot Root = RegistryRoot::CurrentUser;
constexpr const char* Key = "Software\\Quarn";

class RegAccessTest : public ::testing::Test {
  protected:
    Variant Query(const std::string& sDefault = {}, std::int32_t ResultType = 0) {
        return access.QueryValue(Root, Key, "Value", sDefault, ResultType);
    }
    void PutBytes(const std::string& bytes, std::uint32_t type = 3) {
        fake.registry.CreateKey(Root, Key);
        fake.registry.WriteValue(Root, Key, "Value", type, bytes);
    }

    FakeDesktop fake;
    clsAppLog log{fake.desktop, "C:\\Quarn\\"};
    clsRegAccess access{log, fake.registry, fake.locale};
};

TEST_F(RegAccessTest, CreatesReadsListsAndRemoves) {
    EXPECT_FALSE(access.QueryKey(Root, Key));
    EXPECT_TRUE(access.SetKey(Root, Key));
    EXPECT_TRUE(access.QueryKey(Root, Key));
    EXPECT_TRUE(access.SetValue(Root, Key, "Value", std::string("text"), clsRegAccess::TextType));
    EXPECT_EQ(Query("default"), Variant("text"));
    EXPECT_TRUE(access.SetKey(Root, "Software\\Quarn\\Below"));
    EXPECT_EQ(access.EnumKeys(Root, Key), Texts{"Below"});
    EXPECT_EQ(access.EnumKeys(Root, "Software"), Texts{"Quarn"});

    EXPECT_FALSE(access.DeleteKey(Root, Key)) << "a key is below it";
    EXPECT_TRUE(access.DeleteValue(Root, Key, "Value"));
    EXPECT_EQ(Query("default"), Variant("default"));
    EXPECT_TRUE(access.DeleteKey(Root, "Software\\Quarn\\Below"));
    EXPECT_TRUE(access.DeleteKey(Root, Key));
    EXPECT_FALSE(access.QueryKey(Root, Key));
    EXPECT_EQ(log.ErrorCount(), 0);
}

TEST_F(RegAccessTest, AMissingKeyIsNoError) {
    EXPECT_FALSE(access.DeleteKey(Root, Key));
    EXPECT_FALSE(access.DeleteValue(Root, Key, "Value"));
    EXPECT_FALSE(access.SetValue(Root, Key, "Value", std::string("x"), clsRegAccess::TextType));
    EXPECT_EQ(access.EnumKeys(Root, Key), Texts{});
    EXPECT_EQ(Query("default"), Variant("default"));
    EXPECT_EQ(Query(), Variant(""));
    access.SetKey(Root, Key);
    EXPECT_FALSE(access.DeleteValue(Root, Key, "Value"));
    EXPECT_EQ(Query("default"), Variant("default"));
    EXPECT_FALSE(access.QueryKey(RegistryRoot::LocalMachine, Key)) << "another root";
    EXPECT_EQ(log.ErrorCount(), 0);
}

TEST_F(RegAccessTest, ReadsEveryTypeAsTextWithoutItsLastByte) {
    const struct {
        std::string bytes;
        std::string text;
    } cases[] = {
        {std::string("text\0", 5), "text"},
        {std::string("\0", 1), ""},
        {"", ""},
        {"x", ""},
        {"unended", "unende"},
        {std::string("a\0b\0\0", 5), std::string("a\0b\0", 4)},
        {std::string("\x01\x00\x00\x00", 4), std::string("\x01\x00\x00", 3)},
        {std::string("\xff\x80\0", 3), "\xff\x80"},
        {std::string(254, 'x') + '\0', std::string(254, 'x')},
        {std::string(255, 'x') + '\0', "default"}, // beyond the buffer
        {std::string(100'000, 'x'), "default"},
    };
    for (const auto& c : cases) {
        PutBytes(c.bytes);
        EXPECT_EQ(Query("default"), Variant(c.text));
    }
}

TEST_F(RegAccessTest, ShapesBooleanTexts) {
    for (const char* text : {"TRUE", "true", "True", "tRuE"}) {
        fake.registry.Put(Root, Key, "Value", text);
        EXPECT_EQ(Query("", clsRegAccess::BooleanResult), Variant(text));
    }
    for (const char* text :
         {"", "FALSE", "false", "1", "0", "yes", " true", "true ", "TRUEX", "\xff", "wahr"}) {
        fake.registry.Put(Root, Key, "Value", text);
        EXPECT_EQ(Query("", clsRegAccess::BooleanResult), Variant("FALSE"));
    }
    access.DeleteValue(Root, Key, "Value");
    EXPECT_EQ(Query("", clsRegAccess::BooleanResult), Variant("FALSE"));
    EXPECT_EQ(Query("True", clsRegAccess::BooleanResult), Variant("True"));
}

TEST_F(RegAccessTest, ShapesNumbers) {
    for (const char* text : {"0", "12", "-3", "1.5", " 7 "}) {
        fake.registry.Put(Root, Key, "Value", text);
        EXPECT_EQ(Query("", clsRegAccess::NumberResult), Variant(text));
    }
    for (const char* text : {"", " ", "x", "1x", "--1", "TRUE", "\xb2"}) {
        fake.registry.Put(Root, Key, "Value", text);
        EXPECT_EQ(Query("", clsRegAccess::NumberResult), Variant(0)) << text;
    }
    access.DeleteValue(Root, Key, "Value");
    EXPECT_EQ(Query("5", clsRegAccess::NumberResult), Variant("5"));
    EXPECT_EQ(Query("", clsRegAccess::NumberResult), Variant(0));
}

TEST_F(RegAccessTest, OtherResultTypesLeaveTheTextAlone) {
    fake.registry.Put(Root, Key, "Value", "no number");
    for (const std::int32_t type : {0, 3, -1, 255})
        EXPECT_EQ(Query("", type), Variant("no number"));
}

TEST_F(RegAccessTest, WritesEachTypeAsItsBytes) {
    const struct {
        Variant setting;
        std::uint32_t type;
        std::string bytes;
    } cases[] = {
        {"text", clsRegAccess::TextType, std::string("text\0", 5)},
        {"", clsRegAccess::TextType, std::string("\0", 1)},
        {42, clsRegAccess::TextType, std::string("42\0", 3)},
        {"%PATH%", clsRegAccess::ExpandedTextType, std::string("%PATH%\0", 7)},
        {258, clsRegAccess::NumberType, std::string("\x02\x01\0\0", 4)},
        {-1, clsRegAccess::NumberType, "\xff\xff\xff\xff"},
        {"258", clsRegAccess::NumberType, std::string("\x02\x01\0\0", 4)},
        {std::string("a\0b", 3), 3, std::string("a\0b", 3)},
    };
    access.SetKey(Root, Key);
    for (const auto& c : cases) {
        EXPECT_TRUE(access.SetValue(Root, Key, "Value", c.setting, c.type));
        const MemoryRegistry::Value* value = fake.registry.Find(Root, Key, "Value");
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(value->bytes, c.bytes);
        EXPECT_EQ(value->type, c.type);
    }
}

TEST_F(RegAccessTest, ATextThatIsNoNumberIsNotWrittenAsOne) {
    access.SetKey(Root, Key);
    for (const char* text : {"", "x", "99999999999"})
        EXPECT_FALSE(access.SetValue(Root, Key, "Value", std::string(text), clsRegAccess::NumberType));
    EXPECT_EQ(fake.registry.Find(Root, Key, "Value"), nullptr);
    EXPECT_EQ(LoggedErrors(log),
              (Texts{"clsRegAccess;SetValue;13", "clsRegAccess;SetValue;13", "clsRegAccess;SetValue;6"}));
}

TEST_F(RegAccessTest, EachMemberLogsItsOwnFaults) {
    fake.registry.fault = ErrorNumber::OutOfMemory;
    EXPECT_FALSE(access.DeleteKey(Root, Key));
    EXPECT_FALSE(access.DeleteValue(Root, Key, "Value"));
    EXPECT_EQ(access.EnumKeys(Root, Key), Texts{});
    EXPECT_FALSE(access.QueryKey(Root, Key));
    EXPECT_EQ(Query("default"), Variant("default"));
    EXPECT_FALSE(access.SetKey(Root, Key));
    EXPECT_FALSE(access.SetValue(Root, Key, "Value", 1, clsRegAccess::NumberType));
    EXPECT_EQ(LoggedErrors(log),
              (Texts{"clsRegAccess;DeleteKey;7", "clsRegAccess;DeleteValue;7", "clsRegAccess;EnumKeys;7",
                     "clsRegAccess;QueryKey;7", "clsRegAccess;QueryValue;7", "clsRegAccess;SetKey;7",
                     "clsRegAccess;SetValue;7"}));
    EXPECT_TRUE(fake.prompts.shown.empty());
}

} // namespace
} // namespace quarn
