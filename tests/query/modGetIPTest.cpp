#include "query/modGetIP.h"

#include "tests/fakes/ProgramTest.h"

#include <gmock/gmock.h>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string BothNeeded = "You have to enter both, an address and a port for the new server!";
const std::string PortNotNumerical = "The specified port must be numerical!";
const std::string NotFourSets = "The IP address entered does not contain 4 sets of numbers!";

class modGetIPTest : public ProgramTest {
  protected:
    std::string Validate(const std::string& address, const std::string& port) {
        return ValidateAddress(program, fake.desktop, address, port, wait, wrong);
    }
    // The texts of the message boxes shown since the last call.
    std::vector<std::string> Shown() {
        std::vector<std::string> texts;
        for (const FakePrompts::Prompt& prompt : fake.prompts.shown)
            texts.push_back(prompt.text);
        fake.prompts.shown.clear();
        return texts;
    }

    // Lets events run as the main window does.
    const WaitFunction wait = [this](const std::function<bool()>& condition) {
        while (!condition() && !givesUp)
            fake.events.WaitForEvent();
        return !givesUp;
    };
    bool givesUp = false;
    AddressField wrong = AddressField::Address;
};

TEST_F(modGetIPTest, AHostNameBecomesItsDottedAddress) {
    fake.hosts.addresses["games.example"] = "10.1.2.3";
    EXPECT_EQ(AddrByName(*program.AppLog, fake.hosts, "games.example", wait), "10.1.2.3");
    EXPECT_EQ(Validate("games.example", "27960"), "10.1.2.3");
    EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(modGetIPTest, AHostNameThatDoesNotResolveGivesNothingAndSaysNothing) {
    EXPECT_EQ(AddrByName(*program.AppLog, fake.hosts, "nowhere.example", wait), "");
    EXPECT_EQ(Validate("nowhere.example", "27960"), "");
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_THAT(Logged(), IsEmpty());
}

class BrokenHostNames : public HostNames {
  public:
    void LookUp(const std::string&, Answer) override { throw RunTimeError(ErrorNumber::DeviceUnavailable); }
    void Cancel() override {}
};

TEST_F(modGetIPTest, ALookUpThatFailsIsLoggedAndNotShown) {
    BrokenHostNames hosts;
    EXPECT_EQ(AddrByName(*program.AppLog, hosts, "games.example", wait), "");
    EXPECT_THAT(Logged(), ElementsAre("modGetIP;AddrByName;68"));
    EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(modGetIPTest, EventsRunWhileANameIsLookedUp) {
    fake.hosts.addresses["games.example"] = "10.1.2.3";
    fake.hosts.lookUpMilliseconds = 5000;
    int events = 0;
    for (const int delay : {10, 4000, 6000})
        fake.events.PostIn(delay, [&] { ++events; });
    EXPECT_EQ(Validate("games.example", "27960"), "10.1.2.3");
    EXPECT_EQ(events, 2);
    EXPECT_EQ(fake.hosts.cancelled, 0);
}

TEST_F(modGetIPTest, ALookUpThatIsGivenUpIsCancelledAndFindsNothing) {
    fake.hosts.addresses["games.example"] = "10.1.2.3";
    fake.hosts.lookUpMilliseconds = 5000;
    fake.events.PostIn(10, [&] { givesUp = true; });
    EXPECT_EQ(Validate("games.example", "27960"), "");
    EXPECT_EQ(fake.hosts.cancelled, 1);
    fake.events.RunFor(10'000); // an answer that came now would find its place gone
    EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(modGetIPTest, TheFieldToCorrectIsTold) {
    fake.locale.german = true;
    const struct {
        const char* address;
        const char* port;
        AddressField wrong;
    } cases[] = {
        {"", "", AddressField::Address},
        {"", "27960", AddressField::Address},
        {"", "27a", AddressField::Address},
        {"10.0.0.1", "", AddressField::Port},
        {"10.0.0.1", "27a", AddressField::Port},
        {"nowhere.example", "27a", AddressField::Port},
        {"nowhere.example", "27960", AddressField::Address},
        {"5", "27960", AddressField::Address},
        {"10.0.0.256", "27960", AddressField::Address},
        {"10..0.1", "27960", AddressField::Address},
    };
    for (const auto& c : cases) {
        for (const AddressField before : {AddressField::Address, AddressField::Port}) {
            wrong = before;
            EXPECT_EQ(Validate(c.address, c.port), "");
            EXPECT_EQ(wrong, c.wrong) << c.address << ' ' << c.port;
        }
    }
}

TEST_F(modGetIPTest, EachRefusalNamesItsReason) {
    fake.locale.german = true;
    const struct {
        const char* address;
        const char* port;
        std::string message;
    } cases[] = {
        {"", "", BothNeeded},
        {"", "27960", BothNeeded},
        {"10.0.0.1", "", BothNeeded},
        {"", "27a", BothNeeded},
        {"10.0.0.1", "27a", PortNotNumerical},
        {"10.0.0.1", " ", PortNotNumerical},
        {"10.0.0.1", "0x10", PortNotNumerical},
        {"1.2.3", "27a", PortNotNumerical}, // the port is checked first
        {"games.example", "port", PortNotNumerical},
        {"5", "27960", NotFourSets},
        {"1.2.3", "27960", NotFourSets},
        {"1.2.3.4.5", "27960", NotFourSets},
        {"1,5", "27960", NotFourSets},
        {"256.0.0.1", "27960", "The 1. value has to be between 0 and 255!"},
        {"-1.0.0.1", "27960", "The 1. value has to be between 0 and 255!"},
        {"10.1000.0.1", "27960", "The 2. value has to be between 0 and 255!"},
        {"10.0.300.1", "27960", "The 3. value has to be between 0 and 255!"},
        {"10.0.0.256", "27960", "The 4. value has to be between 0 and 255!"},
        {"300.300.300.300", "27960", "The 1. value has to be between 0 and 255!"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Validate(c.address, c.port), "") << c.address;
        EXPECT_THAT(Shown(), ElementsAre(c.message)) << c.address << ' ' << c.port;
    }
    EXPECT_THAT(fake.hosts.lookUps, IsEmpty());
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(modGetIPTest, ARefusalIsACriticalMessageOfTheProgram) {
    Validate("", "");
    ASSERT_EQ(fake.prompts.shown.size(), 1U);
    EXPECT_EQ(fake.prompts.shown[0].kind, FakePrompts::Kind::Error);
    EXPECT_EQ(fake.prompts.shown[0].title, "Quarn - Error");
}

TEST_F(modGetIPTest, ADottedAddressIsReturnedUnchangedWhereTheDotGroupsDigits) {
    fake.locale.german = true;
    for (const char* address : {"10.0.0.1", "0.0.0.0", "255.255.255.255", "010.000.0.1", " 10.0.0.1 "}) {
        EXPECT_EQ(Validate(address, "27960"), address);
        EXPECT_THAT(Shown(), IsEmpty()) << address;
    }
    EXPECT_THAT(fake.hosts.lookUps, IsEmpty());
}

TEST_F(modGetIPTest, ADottedAddressIsLookedUpWhereTheDotIsTheDecimalSign) {
    fake.hosts.addresses["10.0.0.1"] = "10.0.0.1";
    EXPECT_EQ(Validate("10.0.0.1", "27960"), "10.0.0.1");
    EXPECT_EQ(Validate("10.0.300.1", "27960"), "");
    EXPECT_EQ(Validate("1.2.3", "27960"), "");
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_THAT(fake.hosts.lookUps, ElementsAre("10.0.0.1", "10.0.300.1", "1.2.3"));
}

TEST_F(modGetIPTest, NumbersOfTheEnglishLocaleAreNoAddressesThere) {
    for (const char* address : {"5", "1.2", "-1", "1e3", "1,000"}) {
        EXPECT_EQ(Validate(address, "27960"), "");
        EXPECT_THAT(Shown(), ElementsAre(NotFourSets)) << address;
    }
    EXPECT_THAT(fake.hosts.lookUps, IsEmpty());
}

TEST_F(modGetIPTest, APortNeedsOnlyToBeANumber) {
    fake.hosts.addresses["games.example"] = "10.1.2.3";
    for (const char* port : {"0", "-1", "65536", "99999999999", "27960.5", "1,000", " 27960 ", "1e3"})
        EXPECT_EQ(Validate("games.example", port), "10.1.2.3") << port;
    EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(modGetIPTest, APartThatDoesNotConvertIsAnErrorShownToTheUser) {
    fake.locale.german = true;
    EXPECT_EQ(Validate("10..0.1", "27960"), "");
    EXPECT_EQ(Validate("10.0.0.9999999999", "27960"), "");
    EXPECT_THAT(Logged(), ElementsAre("modGetIP;ValidateAddress;13", "modGetIP;ValidateAddress;6"));
    EXPECT_EQ(Shown().size(), 2U);
}

} // namespace
} // namespace quarn
