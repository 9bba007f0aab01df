#pragma once

#include <dialect/Value.h>

#include <QString>

#include <span>
#include <vector>

namespace oVELDRA::data {

/// What a verification can find, in the order of the report.
enum class FindingKind : quint8 {
    WrongBalance,
    NegativeBalance,
    DischargeWithoutArticle,
    DischargeWithoutHeader,
    ArticleWithoutHeader,
    HalfRenumbered,
    RepeatedArticle,
    DuplicateKey,
    RelationWithoutProduct,
    PositionNotInTariff,
    ProductWithoutPosition
};
inline constexpr size_t findingKinds = 11;

/// The columns and figures that findings have. A kind has some of them.
enum class Field : quint8 {
    INTDCL,
    ARTDCL,
    ARTITM,
    ARTSBT,
    ARTNRO,
    EXTINT,
    EXTSBT,
    EXTNOF,
    CATNRO,
    PRDNRO,
    PRDNCM,
    Declared,
    Discharged,
    Expected,
    Balance
};
inline constexpr size_t fields = 15;

/// What a report calls a field: columns by their own names, figures in Spanish.
[[nodiscard]] QString fieldName(Field field);

struct KindTexts
{
    QString code;  ///< for programs; never changes
    QString title; ///< in Spanish
    std::vector<Field> fields;
};

[[nodiscard]] const KindTexts& textsOf(FindingKind kind);

/// One thing that is not as it should be.
struct Finding
{
    struct Entry
    {
        Field field;
        dialect::Value value; ///< Null where the row has Null
    };

    FindingKind kind = FindingKind::WrongBalance;
    QString table;
    std::vector<Entry> entries; ///< in the order of Field
    QString text;               ///< a Spanish sentence

    /// The value of a field; Null when the finding does not have it.
    [[nodiscard]] dialect::Value value(Field field) const;
};

/// Takes findings as they are made.
class FindingSink
{
public:
    FindingSink() = default;
    FindingSink(const FindingSink&) = delete;
    FindingSink& operator=(const FindingSink&) = delete;
    virtual ~FindingSink() = default;

    virtual void add(const Finding& finding) = 0;
};

/// A value for a sentence: texts between «», numbers as the user writes them, "sin valor" for Null.
[[nodiscard]] QString quoted(const dialect::Value& value);

/// A number for a sentence, as the user writes it.
[[nodiscard]] QString written(double number);

} // namespace oVELDRA::data
