#include "support/frmAbout.h"

#include "core/Version.h"
#include "query/clsIPLocation.h"
#include "tests/fakes/ProgramTest.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

constexpr const char* LocationKey = "SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr const char* ToolKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSInfo";
constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;

class frmAboutTest : public ProgramTest {
  protected:
    frmAboutTest() {
        fake.files.Put("C:\\Tools\\msinfo.exe", "");
        fake.files.Put("C:\\Other\\msinfo.exe", "");
    }

    // The file that System Info runs; empty if it runs none.
    std::string Run() {
        fake.shell.opened.clear();
        form.cmdSystemInfo_Click();
        EXPECT_TRUE(fake.prompts.shown.empty());
        return fake.shell.opened.empty() ? std::string() : fake.shell.opened[0].file;
    }

    int closed = 0;
    frmAbout form{program, fake.desktop, [this] { ++closed; }};
};

TEST_F(frmAboutTest, ShowsTheProgramsVersion) {
    form.Form_Load();
    EXPECT_EQ(form.lblVersion, "Version " + std::to_string(VersionMajor) + "." +
                                   std::to_string(VersionMinor) + "." + std::to_string(VersionRevision));
}

TEST_F(frmAboutTest, RunsTheSystemsInformationTool) {
    fake.registry.Put(Machine, LocationKey, "MSInfo", "C:\\Tools\\msinfo.exe");
    fake.registry.Put(Machine, ToolKey, "Path", "C:\\Other\\msinfo.exe");
    EXPECT_EQ(Run(), "C:\\Tools\\msinfo.exe");
    const Shell::Request& request = fake.shell.opened.at(0);
    EXPECT_EQ(request.verb, "open");
    EXPECT_EQ(request.parameters, "");
    EXPECT_EQ(static_cast<int>(request.show), 1);
}

TEST_F(frmAboutTest, UsesTheSecondKeyOnlyIfTheFirstIsEmpty) {
    fake.registry.Put(Machine, ToolKey, "Path", "C:\\Other\\msinfo.exe");
    EXPECT_EQ(Run(), "C:\\Other\\msinfo.exe");
    fake.registry.Put(Machine, LocationKey, "MSInfo", "");
    EXPECT_EQ(Run(), "C:\\Other\\msinfo.exe");
    fake.registry.Put(Machine, LocationKey, "MSInfo", "C:\\gone.exe");
    EXPECT_EQ(Run(), "");
}

TEST_F(frmAboutTest, ExpandsTheVariablesInItsPath) {
    fake.registry.Put(Machine, ToolKey, "Path", "%Tools%\\msinfo.exe");
    EXPECT_EQ(Run(), "C:\\Tools\\msinfo.exe");
    fake.registry.Put(Machine, ToolKey, "Path", "%Unknown%\\msinfo.exe");
    EXPECT_EQ(Run(), "");
}

TEST_F(frmAboutTest, RunsNothingThatIsNoFile) {
    EXPECT_EQ(Run(), "") << "no value at all";
    fake.files.PutFolder("C:\\Tools");
    for (const char* value :
         {"", " ", "C:\\Tools", "C:\\Tools\\", "C:\\gone.exe", "msinfo.exe", "\"C:\\Tools\\msinfo.exe\""}) {
        fake.registry.Put(Machine, LocationKey, "MSInfo", value);
        EXPECT_EQ(Run(), "") << value;
    }
    fake.registry.Put(Machine, LocationKey, "MSInfo", std::string(300, 'x'));
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

TEST_F(frmAboutTest, ShowsAndLogsThatTheToolCouldNotBeStarted) {
    fake.registry.Put(Machine, ToolKey, "Path", "C:\\Tools\\msinfo.exe");
    fake.shell.openFault = ErrorNumber::OutOfMemory;
    form.cmdSystemInfo_Click();
    EXPECT_EQ(LoggedErrors(*program.AppLog), std::vector<std::string>{"frmAbout;cmdSystemInfo_Click;7"});
    EXPECT_EQ(fake.prompts.shown.size(), 1U);
}

TEST_F(frmAboutTest, ClosesOnOkAndEscape) {
    form.cmdOK_Click();
    EXPECT_EQ(closed, 1);
    form.Form_KeyDown(27);
    EXPECT_EQ(closed, 2);
    for (const int key : {0, 13, 26, 28})
        form.Form_KeyDown(key);
    EXPECT_EQ(closed, 2);
}

} // namespace
} // namespace quarn
