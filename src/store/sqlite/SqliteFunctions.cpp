#include "SqliteFunctions.h"

#include <dialect/Evaluator.h>
#include <dialect/SqlitePrinter.h>
#include <dialect/TextComparison.h>
#include <store/Bindings.h>
#include <store/RecordData.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <string_view>

namespace oVELDRA::store {

namespace {

using Pending = std::optional<RuntimeError>;

/// The UTF-8 text of an argument, valid until the function returns.
std::string_view textOf(sqlite3_value* value)
{
    // The text must be asked for before its length.
    const auto* const text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
    return text ? std::string_view(text, static_cast<size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

QString stringOf(sqlite3_value* value)
{
    const std::string_view text = textOf(value);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void resultText(sqlite3_context* context, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text64(context, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
}

/// Nothing may be thrown through SQLite: an error is noted and thrown by whoever stepped.
template <typename Body>
void guarded(sqlite3_context* context, Body body)
{
    auto& pending = *static_cast<Pending*>(sqlite3_user_data(context));
    try {
        body();
        return;
    } catch (const RuntimeError& error) {
        pending = error;
    } catch (const std::exception&) {
        pending = RuntimeError(7);
    }
    sqlite3_result_error_code(context, SQLITE_ERROR);
}

void fold(sqlite3_context* context, int /*count*/, sqlite3_value** values)
{
    guarded(context, [&] {
        if (sqlite3_value_type(values[0]) != SQLITE_NULL) {
            resultText(context, dialect::folded(stringOf(values[0])));
        }
    });
}

void like(sqlite3_context* context, int /*count*/, sqlite3_value** values)
{
    guarded(context, [&] {
        if (sqlite3_value_type(values[0]) == SQLITE_NULL || sqlite3_value_type(values[1]) == SQLITE_NULL) {
            return;
        }
        constexpr int patternArgument = 1;
        const auto* pattern = static_cast<const dialect::LikePattern*>(sqlite3_get_auxdata(context, patternArgument));
        std::unique_ptr<dialect::LikePattern> fresh;
        if (!pattern) {
            fresh = std::make_unique<dialect::LikePattern>(stringOf(values[1]));
            pattern = fresh.get();
        }
        sqlite3_result_int(context, pattern->matchesUtf8(textOf(values[0])) ? 1 : 0);
        if (fresh) {
            sqlite3_set_auxdata(context, patternArgument, fresh.release(),
                                [](void* kept) { delete static_cast<dialect::LikePattern*>(kept); });
        }
    });
}

/// The arguments of oveldra_value() as the row of its computation.
class ArgumentRow final : public dialect::RowSource
{
public:
    ArgumentRow(const dialect::Computation& computation, sqlite3_value** columns)
        : m_computation(computation), m_columns(columns)
    {}

    [[nodiscard]] dialect::Value column(int index) const override
    {
        const auto found = std::find(m_computation.columns.begin(), m_computation.columns.end(), index);
        const auto place = static_cast<size_t>(found - m_computation.columns.begin());
        sqlite3_value* const value = m_columns[place];
        switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return valueOfNumber(sqlite3_value_double(value), m_computation.kinds[place]);
        default:
            return valueOfText(stringOf(value), m_computation.kinds[place]);
        }
    }

    [[nodiscard]] dialect::Value aggregate(const dialect::Expr& /*expr*/) const override { return {}; }

private:
    const dialect::Computation& m_computation;
    sqlite3_value** m_columns;
};

void resultValue(sqlite3_context* context, const dialect::Value& value)
{
    switch (value.type) {
    case dialect::ValueType::Text:
        resultText(context, value.text);
        break;
    case dialect::ValueType::Date:
        resultText(context, dialect::isoDate(value.date));
        break;
    case dialect::ValueType::Boolean:
        sqlite3_result_int64(context, static_cast<sqlite3_int64>(value.number));
        break;
    case dialect::ValueType::Number:
        sqlite3_result_double(context, value.number);
        break;
    default:
        sqlite3_result_null(context);
        break;
    }
}

void computedValue(sqlite3_context* context, int count, sqlite3_value** values)
{
    guarded(context, [&] {
        const auto* const bound = static_cast<const BoundComputation*>(
            sqlite3_value_pointer(values[0], dialect::SqlitePrinter::computationPointerType));
        if (!bound || static_cast<size_t>(count) != bound->computation->columns.size() + 1) {
            throw RuntimeError(5); // called by somebody else's SQL
        }
        const ArgumentRow row(*bound->computation, values + 1);
        dialect::Value value = dialect::evaluate(*bound->computation->expr, {bound->literals, bound->separators, &row});
        if (bound->computation->target) {
            value = dialect::storedValue(std::move(value), *bound->computation->target, *bound->separators);
        }
        resultValue(context, value);
    });
}

int compareSpanish(void* /*unused*/, int lengthA, const void* a, int lengthB, const void* b)
{
    return dialect::spanishOrderUtf8({static_cast<const char*>(a), static_cast<size_t>(lengthA)},
                                     {static_cast<const char*>(b), static_cast<size_t>(lengthB)});
}

} // namespace

int defineSqliteFunctions(sqlite3* database, Pending& pending)
{
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    constexpr int anyCount = -1;
    const auto define = [&](const char* name, int count, void (*function)(sqlite3_context*, int, sqlite3_value**)) {
        return sqlite3_create_function_v2(database, name, count, pure, &pending, function, nullptr, nullptr, nullptr);
    };
    int code = define("oveldra_fold", 1, fold);
    code = code == SQLITE_OK ? define("oveldra_like", 2, like) : code;
    code = code == SQLITE_OK ? define("oveldra_value", anyCount, computedValue) : code;
    return code == SQLITE_OK
               ? sqlite3_create_collation_v2(database, "OVELDRA", SQLITE_UTF8, nullptr, compareSpanish, nullptr)
               : code;
}

} // namespace oVELDRA::store
