// Dates of the Access dialect. A date is an OLE automation date: a double counting days
// from 1899-12-30, with the time of day as the fraction. Before the epoch the whole part
// counts days back and the fraction still counts forward from midnight (-1.25 is
// 1899-12-29 06:00), as OLE does.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvo::jet {

struct DateParts {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
    int weekday() const;  // 1 = Sunday ... 7 = Saturday
};

// Days between 1899-12-30 and the given civil date (proleptic Gregorian); any month and
// day numbers are allowed and roll over (month 13 is January of the next year).
long long serialDay(long long year, long long month, long long day);

// The OLE date of a calendar date and time; nullopt when the year leaves 100..9999.
std::optional<double> toOleDate(const DateParts& parts);

// The calendar date and time of an OLE date, rounded to the second; nullopt when it lies
// outside the years 100..9999.
std::optional<DateParts> fromOleDate(double oleDate);

// Reads a date and/or time the way Access reads #literals# and CDate text in a US
// locale: "1/31/2003", "1/31/2003 14:30", "2003-01-31", "31-Jan-2003", "January 31, 2003",
// "2:30 PM". Two-digit years 00-29 are 2000-2029, 30-99 are 1930-1999. A date with no
// year takes the current year; a time alone is on 1899-12-30. nullopt when the text is
// not a valid date.
std::optional<double> parseDate(std::string_view text);

// The English name of a month (1-12) or weekday (1 = Sunday).
std::string_view monthName(int month);
std::string_view weekdayName(int weekday);

// Access's general date text: "1/31/2003", "2:30:00 PM", or both.
std::string generalDateText(double oleDate);

// The current local date and time as an OLE date.
double nowOleDate();

}  // namespace kelvo::jet
