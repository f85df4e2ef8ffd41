#include "win32/desktop/RegistryWin.h"

#include "tests/win32/harness/ReplacedImport.h"
#include "win32/WindowsHeaders.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

constexpr RegistryRoot User = RegistryRoot::CurrentUser;

// Works in a key of this process, which is deleted after the test.
class RegistryWinTest : public ::testing::Test {
  protected:
    ~RegistryWinTest() override {
        for (const std::string& below : registry.SubKeys(User, key).value_or(std::vector<std::string>()))
            registry.DeleteKey(User, key + "\\" + below);
        registry.DeleteKey(User, key);
    }
    bool Write(const std::string& bytes, std::uint32_t type = REG_BINARY) {
        return registry.WriteValue(User, key, "Value", type, bytes);
    }
    std::optional<std::string> Read(std::size_t bufferSize = 255) {
        return registry.ReadValue(User, key, "Value", bufferSize);
    }

    RegistryWin registry;
    const std::string key = "Software\\QuarnTest" + std::to_string(GetCurrentProcessId());
};

TEST_F(RegistryWinTest, CreatesListsAndRemovesKeys) {
    EXPECT_FALSE(registry.KeyExists(User, key));
    EXPECT_EQ(registry.SubKeys(User, key), std::nullopt);
    EXPECT_TRUE(registry.CreateKey(User, key));
    EXPECT_TRUE(registry.CreateKey(User, key)) << "it is there already";
    EXPECT_TRUE(registry.KeyExists(User, key));
    EXPECT_EQ(registry.SubKeys(User, key), std::vector<std::string>{});

    const std::string longName(200, 'k');
    EXPECT_TRUE(registry.CreateKey(User, key + "\\First"));
    EXPECT_TRUE(registry.CreateKey(User, key + "\\" + longName));
    EXPECT_EQ(registry.SubKeys(User, key).value_or(std::vector<std::string>()).size(), 2U);
    EXPECT_FALSE(registry.DeleteKey(User, key)) << "keys are below it";
    EXPECT_TRUE(registry.DeleteKey(User, key + "\\First"));
    EXPECT_EQ(registry.SubKeys(User, key), std::vector<std::string>{longName});
}

TEST_F(RegistryWinTest, KeepsTheBytesOfEveryType) {
    ASSERT_TRUE(registry.CreateKey(User, key));
    EXPECT_EQ(Read(), std::nullopt);
    const struct {
        std::uint32_t type;
        std::string bytes;
    } cases[] = {
        {REG_SZ, std::string("text\0", 5)},
        {REG_SZ, std::string("\0", 1)},
        {REG_SZ, std::string(254, 'x') + '\0'},
        {REG_EXPAND_SZ, std::string("%PATH%\0", 7)},
        {REG_DWORD, std::string("\x02\x01\0\0", 4)},
        {REG_BINARY, std::string("a\0\xff", 3)},
        {REG_BINARY, ""},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(Write(c.bytes, c.type));
        EXPECT_EQ(Read(), c.bytes);
    }
}

TEST_F(RegistryWinTest, RefusesAValueLargerThanTheBuffer) {
    ASSERT_TRUE(registry.CreateKey(User, key));
    ASSERT_TRUE(Write(std::string(255, 'x') + '\0', REG_SZ));
    EXPECT_EQ(Read(255), std::nullopt);
    EXPECT_EQ(Read(256), std::string(255, 'x') + '\0');
}

TEST_F(RegistryWinTest, ExpandsEnvironmentVariables) {
    SetEnvironmentVariableA("QuarnTest", "some value");
    const std::string longText(40'000, 'x');
    const struct {
        std::string text;
        std::string expanded;
    } cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"%QuarnTest%", "some value"},
        {"C:\\%quarntest%\\%QuarnTest%.exe", "C:\\some value\\some value.exe"},
        {"%No such variable%", "%No such variable%"},
        {"100 %", "100 %"},
        {longText, longText},
    };
    for (const auto& c : cases)
        EXPECT_EQ(registry.Expanded(c.text), c.expanded);
    SetEnvironmentVariableA("QuarnTest", nullptr);
}

TEST_F(RegistryWinTest, AMissingKeyOrValueIsAnAnswer) {
    EXPECT_FALSE(Write("x"));
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_FALSE(registry.DeleteValue(User, key, "Value"));
    EXPECT_FALSE(registry.DeleteKey(User, key));
    ASSERT_TRUE(registry.CreateKey(User, key));
    EXPECT_FALSE(registry.DeleteValue(User, key, "Value"));
    ASSERT_TRUE(Write("x"));
    EXPECT_TRUE(registry.DeleteValue(User, key, "Value"));
    EXPECT_EQ(Read(), std::nullopt);
}

TEST_F(RegistryWinTest, KnowsThePredefinedRoots) {
    EXPECT_TRUE(registry.KeyExists(RegistryRoot::LocalMachine, "SOFTWARE\\Microsoft"));
    EXPECT_TRUE(registry.KeyExists(RegistryRoot::ClassesRoot, "CLSID"));
    EXPECT_TRUE(registry.KeyExists(RegistryRoot::Users, ".DEFAULT"));
    EXPECT_FALSE(registry.KeyExists(User, "SOFTWARE\\Microsoft\\No such key of any program"));
}

class RegistryWinAccessTest : public RegistryWinTest {
  protected:
    RegistryWinAccessTest() { accesses.clear(); }

    static LSTATUS WINAPI Refuse(HKEY, LPCSTR, DWORD, REGSAM access, PHKEY) {
        accesses.push_back(access);
        return ERROR_ACCESS_DENIED;
    }

    inline static std::vector<REGSAM> accesses;

  private:
    ReplacedImport openKey_{&RegOpenKeyExA, &Refuse};
};

TEST_F(RegistryWinAccessTest, AsksForNoMoreThanItNeeds) {
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_FALSE(registry.KeyExists(User, key));
    EXPECT_EQ(registry.SubKeys(User, key), std::nullopt);
    EXPECT_FALSE(Write("x"));
    EXPECT_FALSE(registry.DeleteValue(User, key, "Value"));
    EXPECT_EQ(accesses, (std::vector<REGSAM>{KEY_QUERY_VALUE, KEY_QUERY_VALUE, KEY_ENUMERATE_SUB_KEYS,
                                             KEY_SET_VALUE, KEY_SET_VALUE}));
}

} // namespace
} // namespace quarn
