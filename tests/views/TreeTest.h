#pragma once

// A browser whose tree is used.

#include "tests/fakes/HeadlessBrowser.h"
#include "views/GamesTree.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {

class TreeTest : public ::testing::Test {
  protected:
    void Definitions(const std::string& text) { browser.fake.files.Put("C:\\Quarn\\Games.ini", text); }
    TreeView& Tree() { return browser.Controls().trvGames; }
    GamesTree& Form() { return browser.Form().tree; }
    std::int32_t Saves(const std::string& list) {
        return browser.fake.files.Writes(HeadlessBrowser::PathOf(list));
    }
    std::vector<std::string> Checked() {
        std::vector<std::string> checked;
        for (const char* key : {"fltkey", "png20", "png50", "png100"})
            if (Tree().Node(key).image == "checked")
                checked.push_back(key);
        return checked;
    }

    HeadlessBrowser browser;
};

} // namespace quarn
