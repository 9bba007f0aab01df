#include "TextComparison.h"

#include <QCollator>

#include <algorithm>
#include <array>
#include <numeric>

namespace oVELDRA::dialect {

namespace {

// The two letters beyond ASCII whose lower case begins in ASCII. A text of ASCII letters would equal them in one way of
// comparing and not in another; so they have lower cases of their own, from the private use area, on every engine.
constexpr char16_t dottedCapitalI = 0x130;
constexpr char16_t kelvinSign = 0x212A;

char16_t foldedUnit(char16_t c)
{
    if (c < 0x80) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
    }
    switch (c) {
    case dottedCapitalI:
        return u'\uE000';
    case kelvinSign:
        return u'\uE001';
    default:
        return QChar(c).toLower().unicode();
    }
}

/// Letters beyond the first 65,536 characters have two cases, too.
void foldPairs(QString& text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i].isHighSurrogate() && text[i + 1].isLowSurrogate()) {
            const char32_t lower = QChar::toLower(QChar::surrogateToUcs4(text[i], text[i + 1]));
            text[i] = QChar(QChar::highSurrogate(lower));
            text[i + 1] = QChar(QChar::lowSurrogate(lower));
        }
    }
}

const QCollator& spanishCollator()
{
    static const QCollator collator = [] {
        QCollator made{QLocale(QLocale::Spanish, QLocale::Argentina)};
        made.setCaseSensitivity(Qt::CaseInsensitive);
        made.setNumericMode(false);
        made.setIgnorePunctuation(false);
        return made;
    }();
    return collator;
}

/// Place of each printable ASCII character in the collator's order, letters of both cases alike; 0 for the control
/// characters, which it ignores. Between texts of printable ASCII characters the collator compares just these.
const std::array<unsigned char, 128>& asciiPlaces()
{
    static const std::array<unsigned char, 128> places = [] {
        std::array<char16_t, 0x7F - 0x20> characters{};
        std::iota(characters.begin(), characters.end(), u' ');
        const auto before = [](char16_t a, char16_t b) {
            return spanishCollator().compare(QStringView(&a, 1), QStringView(&b, 1)) < 0;
        };
        std::stable_sort(characters.begin(), characters.end(), before);
        std::array<unsigned char, 128> result{};
        unsigned char place = 1;
        for (size_t i = 0; i < characters.size(); ++i) {
            if (i > 0 && before(characters[i - 1], characters[i])) {
                ++place;
            }
            result[characters[i]] = place;
        }
        return result;
    }();
    return places;
}

/// Compares by places as long as both texts are printable ASCII; false when one is not.
template <typename Text>
bool compareAscii(const Text& a, const Text& b, int& result)
{
    const auto& places = asciiPlaces();
    const auto place = [&places](auto unit) -> unsigned {
        const auto code = static_cast<char16_t>(static_cast<std::make_unsigned_t<decltype(unit)>>(unit));
        return code < 128 ? places[code] : 0U;
    };
    const auto sizeA = static_cast<size_t>(a.size());
    const auto sizeB = static_cast<size_t>(b.size());
    const size_t common = std::min(sizeA, sizeB);
    const auto* const unitsA = a.data();
    const auto* const unitsB = b.data();
    result = 0;
    for (size_t i = 0; i < common; ++i) {
        const unsigned placeA = place(unitsA[i]);
        const unsigned placeB = place(unitsB[i]);
        if (placeA == 0 || placeB == 0) {
            return false;
        }
        if (result == 0 && placeA != placeB) {
            result = placeA < placeB ? -1 : 1;
        }
    }
    for (size_t i = common; i < sizeA; ++i) {
        if (place(unitsA[i]) == 0) {
            return false;
        }
    }
    for (size_t i = common; i < sizeB; ++i) {
        if (place(unitsB[i]) == 0) {
            return false;
        }
    }
    if (result == 0 && sizeA != sizeB) {
        result = sizeA < sizeB ? -1 : 1;
    }
    return true;
}

std::string_view withoutTrailingBlanks(std::string_view text)
{
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

/// A character that stands for itself in a regular expression, inside a list and outside.
QString escaped(QChar c)
{
    const bool plain = c.unicode() >= 0x80 || c.isLetterOrNumber() || c == u' ';
    return plain ? QString(c) : QString(QStringLiteral("\\") + c);
}

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

QStringView withoutTrailingBlanks(QStringView text)
{
    while (!text.isEmpty() && text.back() == u' ') {
        text.chop(1);
    }
    return text;
}

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

QString folded(QStringView text)
{
    QString result = withoutTrailingBlanks(text).toString();
    bool pairs = false;
    for (QChar& c : result) {
        pairs = pairs || c.isHighSurrogate();
        c = QChar(foldedUnit(c.unicode()));
    }
    if (pairs) {
        foldPairs(result);
    }
    return result;
}

bool equalTexts(QStringView a, QStringView b)
{
    const QStringView left = withoutTrailingBlanks(a);
    const QStringView right = withoutTrailingBlanks(b);
    return left == right || (left.size() == right.size() && folded(left) == folded(right));
}

int spanishOrder(QStringView a, QStringView b)
{
    const QStringView left = withoutTrailingBlanks(a);
    const QStringView right = withoutTrailingBlanks(b);
    int result = 0;
    const std::u16string_view leftUnits(left.utf16(), static_cast<size_t>(left.size()));
    const std::u16string_view rightUnits(right.utf16(), static_cast<size_t>(right.size()));
    return compareAscii(leftUnits, rightUnits, result) ? result : spanishCollator().compare(left, right);
}

int spanishOrderUtf8(std::string_view a, std::string_view b)
{
    const std::string_view left = withoutTrailingBlanks(a);
    const std::string_view right = withoutTrailingBlanks(b);
    int result = 0;
    return compareAscii(left, right, result) ? result : spanishCollator().compare(fromUtf8(left), fromUtf8(right));
}

LikePattern::LikePattern(QStringView pattern) : m_pattern(pattern.toString())
{
    for (QChar& c : m_pattern) {
        c = QChar(foldedUnit(c.unicode()));
    }
    m_everything = !m_pattern.isEmpty() && m_pattern.count(u'%') == m_pattern.size();
}

QStringView LikePattern::prefixOf(QStringView pattern)
{
    const auto* const special =
        std::find_if(pattern.begin(), pattern.end(), [](QChar c) { return c == u'%' || c == u'_' || c == u'['; });
    return pattern.first(special - pattern.begin());
}

/// Whether one character matches the pattern's element at `at`; `next` becomes the place behind the element.
bool LikePattern::matchesOne(qsizetype at, char16_t c, qsizetype& next) const
{
    const char16_t p = m_pattern[at].unicode();
    next = at + 1;
    if (p == u'_') {
        return true;
    }
    const std::optional<List> list = p == u'[' ? listAt(at) : std::nullopt;
    if (!list) {
        return p == c; // an ordinary character, or a bracket that nothing closes
    }
    next = list->end + 1;
    bool listed = false;
    for (qsizetype i = list->begin; i < list->end;) {
        const char16_t from = m_pattern[i].unicode();
        const bool range = i + 2 < list->end && m_pattern[i + 1] == u'-';
        const char16_t to = range ? m_pattern[i + 2].unicode() : from;
        listed = listed || (c >= from && c <= to);
        i += range ? 3 : 1;
    }
    return listed != list->excluded;
}

std::optional<LikePattern::List> LikePattern::listAt(qsizetype at) const
{
    const qsizetype close = m_pattern.indexOf(u']', at + 1);
    if (close < 0) {
        return std::nullopt;
    }
    const bool excluded = m_pattern[at + 1] == u'!';
    return List{excluded ? at + 2 : at + 1, close, excluded};
}

QString LikePattern::expression() const
{
    QString result = QStringLiteral("^");
    for (qsizetype at = 0; at < m_pattern.size(); ++at) {
        const QChar c = m_pattern[at];
        const std::optional<List> list = c == u'[' ? listAt(at) : std::nullopt;
        if (list) {
            result += listExpression(*list);
            at = list->end;
        } else if (c != u'%') {
            result += c == u'_' ? QStringLiteral(".") : escaped(c);
        } else if (!result.endsWith(QStringLiteral(".*"))) {
            result += QStringLiteral(".*");
        }
    }
    return result + u'$';
}

QString LikePattern::listExpression(const List& list) const
{
    QString listed;
    for (qsizetype i = list.begin; i < list.end;) {
        const bool range = i + 2 < list.end && m_pattern[i + 1] == u'-';
        const QChar to = m_pattern[range ? i + 2 : i];
        if (m_pattern[i] == to) {
            listed += escaped(to);
        } else if (m_pattern[i] < to) {
            listed += escaped(m_pattern[i]) + u'-' + escaped(to);
        }
        i += range ? 3 : 1;
    }
    if (listed.isEmpty()) {
        return list.excluded ? QStringLiteral(".") : QStringLiteral("(?!)"); // any character, or none at all
    }
    return (list.excluded ? QStringLiteral("[^") : QStringLiteral("[")) + listed + u']';
}

template <typename Text>
bool LikePattern::matchesUnits(const Text& text) const
{
    const auto size = static_cast<qsizetype>(text.size());
    const auto* const units = text.data();
    qsizetype at = 0;
    qsizetype read = 0;
    qsizetype resumePattern = -1; // behind the last % met, to try again one character further
    qsizetype resumeText = 0;
    while (read < size) {
        if (at < m_pattern.size() && m_pattern[at] == u'%') {
            resumePattern = ++at;
            resumeText = read;
            continue;
        }
        qsizetype next = at;
        const auto unit =
            static_cast<char16_t>(static_cast<std::make_unsigned_t<std::decay_t<decltype(*units)>>>(units[read]));
        if (at < m_pattern.size() && matchesOne(at, foldedUnit(unit), next)) {
            at = next;
            ++read;
            continue;
        }
        if (resumePattern < 0) {
            return false;
        }
        at = resumePattern;
        read = ++resumeText;
    }
    while (at < m_pattern.size() && m_pattern[at] == u'%') {
        ++at;
    }
    return at == m_pattern.size();
}

bool LikePattern::matches(QStringView text) const
{
    return m_everything || matchesUnits(std::u16string_view(text.utf16(), static_cast<size_t>(text.size())));
}

bool LikePattern::matchesUtf8(std::string_view text) const
{
    if (m_everything) {
        return true;
    }
    const bool ascii =
        std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return ascii ? matchesUnits(text) : matches(fromUtf8(text));
}

} // namespace oVELDRA::dialect
