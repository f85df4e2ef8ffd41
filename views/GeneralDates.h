#pragma once

// Reads the dates that a list shows, thousands at a time. The locale's own conversion compares each text with
// all names of days and months. So the locale's date layout is derived once, from dates that the locale is
// asked to write, and texts in exactly that layout are read here. Any other text goes to the locale. So do
// all texts if the layout uses names or two-digit years.

#include "desktop/LocaleText.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class GeneralDates {
  public:
    // The locale must outlive this object and keep its layout.
    explicit GeneralDates(const LocaleText& locale);
    GeneralDates(const GeneralDates&) = delete;
    GeneralDates& operator=(const GeneralDates&) = delete;

    // The result of the locale's ToDate, including its errors.
    DateTime Read(const std::string& text);

  private:
    // A numeric field, or literal text. The AM/PM marker has two texts.
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
    std::vector<Part> layout_; // empty: unknown
    bool halvesOfTheDay_ = false;

    // Servers that were never visited all have the same text.
    std::string lastText_;
    DateTime lastDate_;
};

} // namespace quarn
