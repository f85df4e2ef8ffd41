#pragma once

// Reads the dates that a list shows, thousands at a time. The locale's own conversion looks through all its
// names of days and months for each of them; so the layout in which the locale writes dates is found out
// once, from dates that it is asked to write, and texts in exactly that layout are read without it. Every
// other text is left to the locale, and so is all of them when its layout has names or short years.

#include "desktop/LocaleText.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class GeneralDates {
  public:
    // The locale must outlive this object, and keep its layout for as long.
    explicit GeneralDates(const LocaleText& locale);
    GeneralDates(const GeneralDates&) = delete;
    GeneralDates& operator=(const GeneralDates&) = delete;

    // What the locale's ToDate gives, its errors included.
    DateTime Read(const std::string& text);

  private:
    // Digits of a number, or the same text in every date. The mark of the half of the day has two texts.
    struct Part {
        int CalendarTime::*number = nullptr;
        std::string_view morning;
        std::string_view afternoon;
    };

    void LearnLayout();
    bool ReadsWhatTheLocaleWrites() const;
    std::optional<DateTime> ReadInLayout(std::string_view text) const;

    const LocaleText& locale_;
    std::string morningSample_;
    std::string afternoonSample_;
    std::vector<Part> layout_; // empty: not known
    bool halvesOfTheDay_ = false;

    // Servers that were never visited all have the same text.
    std::string lastText_;
    DateTime lastDate_;
};

} // namespace quarn
