#include "Dates.h"

#include <oVELDRA/RuntimeError.h>

#include <QLatin1StringView>
#include <QLocale>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace oVELDRA::runtime {

namespace {

constexpr auto shortMask = "dd/mm/yyyy"_L1;
constexpr auto longMask = "Long Date"_L1;

/// One month's names: Spanish and English, and what else is in use beside their first three letters.
struct MonthNames
{
    QLatin1StringView spanish;
    QLatin1StringView english;
    std::array<QLatin1StringView, 3> others{};
};

constexpr std::array monthNames{
    MonthNames{"enero"_L1, "january"_L1},
    MonthNames{"febrero"_L1, "february"_L1},
    MonthNames{"marzo"_L1, "march"_L1},
    MonthNames{"abril"_L1, "april"_L1},
    MonthNames{"mayo"_L1, "may"_L1},
    MonthNames{"junio"_L1, "june"_L1},
    MonthNames{"julio"_L1, "july"_L1},
    MonthNames{"agosto"_L1, "august"_L1},
    MonthNames{"septiembre"_L1, "september"_L1, {"setiembre"_L1, "set"_L1, "sept"_L1}},
    MonthNames{"octubre"_L1, "october"_L1},
    MonthNames{"noviembre"_L1, "november"_L1},
    MonthNames{"diciembre"_L1, "december"_L1},
};

bool spells(QStringView word, QLatin1StringView name)
{
    return word.compare(name, Qt::CaseInsensitive) == 0;
}

bool namesMonth(QStringView word, const MonthNames& month)
{
    const auto fits = [word](QLatin1StringView name) { return spells(word, name); };
    return fits(month.spanish) || fits(month.english) || fits(month.spanish.first(3)) || fits(month.english.first(3)) ||
           std::ranges::any_of(month.others, fits);
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// A run of digits or of letters of a date.
class Part
{
public:
    Part() = default;
    explicit Part(QStringView text) : m_text(text) {}

    [[nodiscard]] bool isWord() const { return !isDigit(m_text.front()); }
    [[nodiscard]] qsizetype size() const { return m_text.size(); }

    /// The number of one or two digits, or 0.
    [[nodiscard]] int shortNumber() const { return !isWord() && size() <= 2 ? m_text.toInt() : 0; }
    /// 1 to 12 by number or name, greater for a number that is no month, or 0.
    [[nodiscard]] int month() const;
    /// The year of four digits or of two, or 0.
    [[nodiscard]] int year() const;

private:
    QStringView m_text;
};

int Part::month() const
{
    if (!isWord()) {
        return shortNumber();
    }
    int number = 0;
    for (const MonthNames& names : monthNames) {
        ++number;
        if (namesMonth(m_text, names)) {
            return number;
        }
    }
    return 0;
}

int Part::year() const
{
    if (isWord()) {
        return 0;
    }
    if (size() == 4) {
        // The years that the automation runtime's dates can hold.
        const int year = m_text.toInt();
        return year >= 100 ? year : 0;
    }
    if (size() != 2) {
        return 0;
    }
    const int year = m_text.toInt();
    return year < 30 ? 2000 + year : 1900 + year;
}

/// Takes a date apart, from left to right.
class DateReader
{
public:
    explicit DateReader(QStringView text) : m_rest(text.trimmed()) {}

    /// The next run of digits or letters; empty when there is none.
    [[nodiscard]] QStringView takeRun();
    /// One of `/ - .` with or without blanks around it, or blanks with or without the word "de" between them.
    [[nodiscard]] bool takeSeparator();
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }

private:
    bool takeBlanks();

    QStringView m_rest;
};

QStringView DateReader::takeRun()
{
    if (m_rest.isEmpty()) {
        return {};
    }
    const bool digits = isDigit(m_rest.front());
    const auto* const end = std::ranges::find_if_not(
        m_rest, [digits](QChar character) { return digits ? isDigit(character) : character.isLetter(); });
    const QStringView run = m_rest.first(end - m_rest.begin());
    m_rest = m_rest.sliced(run.size());
    return run;
}

bool DateReader::takeSeparator()
{
    const bool blanks = takeBlanks();
    if (m_rest.isEmpty()) {
        return false;
    }
    if ("/-."_L1.contains(m_rest.front())) {
        m_rest = m_rest.sliced(1);
        takeBlanks();
        return true;
    }
    if (!blanks) {
        return false;
    }
    DateReader ahead = *this;
    if (const QStringView word = ahead.takeRun(); (spells(word, "de"_L1) || spells(word, "del"_L1))) {
        if (!ahead.takeBlanks()) {
            return false;
        }
        *this = ahead;
    }
    return true;
}

bool DateReader::takeBlanks()
{
    const qsizetype before = m_rest.size();
    while (!m_rest.isEmpty() && m_rest.front().isSpace()) {
        m_rest = m_rest.sliced(1);
    }
    return m_rest.size() < before;
}

/// The three parts of a date in the order of the text, or nothing.
std::optional<std::array<Part, 3>> partsOf(QStringView text)
{
    DateReader reader(text);
    std::array<Part, 3> parts;
    for (Part& part : parts) {
        if (&part != parts.begin() && !reader.takeSeparator()) {
            return std::nullopt;
        }
        const QStringView run = reader.takeRun();
        if (run.isEmpty()) {
            return std::nullopt;
        }
        part = Part(run);
    }
    return reader.atEnd() ? std::optional(parts) : std::nullopt;
}

std::optional<QDate> dateOf(int year, int month, int day)
{
    return year != 0 && QDate::isValid(year, month, day) ? std::optional(QDate(year, month, day)) : std::nullopt;
}

} // namespace

std::optional<QDate> parseDate(QStringView text)
{
    const std::optional<std::array<Part, 3>> parts = partsOf(text);
    if (!parts) {
        return std::nullopt;
    }
    const auto& [first, second, third] = *parts;
    if (first.size() == 4 && !first.isWord()) {
        return dateOf(first.year(), second.month(), third.shortNumber());
    }
    const std::optional<QDate> date = dateOf(third.year(), second.month(), first.shortNumber());
    return date ? date : dateOf(third.year(), first.month(), second.shortNumber());
}

bool IsDate(QStringView text)
{
    return parseDate(text).has_value();
}

QDate DateValue(QStringView text)
{
    const std::optional<QDate> date = parseDate(text);
    if (!date) {
        throw RuntimeError(13);
    }
    return *date;
}

bool isDateMask(QStringView mask)
{
    return spells(mask, shortMask) || spells(mask, longMask);
}

QString FormatDate(QDate date, QStringView mask)
{
    if (!isDateMask(mask)) {
        throw RuntimeError(5);
    }
    return spells(mask, shortMask) ? date.toString(u"dd/MM/yyyy") : QLocale().toString(date, QLocale::LongFormat);
}

} // namespace oVELDRA::runtime
