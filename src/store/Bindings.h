#pragma once

#include <dialect/Evaluator.h>
#include <dialect/Plan.h>

#include <QStringView>

#include <deque>
#include <string>
#include <vector>

namespace oVELDRA::store {

/// A computation with the literals of the statement being run.
struct BoundComputation
{
    const dialect::Computation* computation = nullptr;
    const dialect::Literals* literals = nullptr;
    const dialect::LazySeparators* separators = nullptr;
};

/// The values of a statement's parameters, in order. Texts lie in one UTF-8 buffer; the object is reused from
/// statement to statement, so that binding allocates nothing once it has grown.
class Bindings
{
public:
    enum class Kind : quint8 { Null, Integer, Real, Text, Computation };

    struct Item
    {
        Kind kind = Kind::Null;
        qint64 integer = 0;
        double real = 0;
        size_t offset = 0; ///< of Text, into the buffer
        size_t length = 0;
        const BoundComputation* computation = nullptr;
    };

    void clear();
    void addNull() { m_items.emplace_back(); }
    void addInteger(qint64 integer);
    void addReal(double real);
    void addText(QStringView text);
    void addComputation(const BoundComputation& computation);
    /// A value as engines keep it: dates as ISO texts, yes/no as integers.
    void add(const dialect::Value& value);

    [[nodiscard]] const std::vector<Item>& items() const { return m_items; }
    [[nodiscard]] std::string_view text(const Item& item) const { return {m_bytes.data() + item.offset, item.length}; }

private:
    std::vector<Item> m_items;
    std::string m_bytes;
    std::deque<BoundComputation> m_computations;
};

/// Works out a text's parameters from the literals of the statement being run. False when a value is not one that the
/// text can do with (see dialect::BindAs); the statement's exact text then does.
[[nodiscard]] bool bindParameters(const dialect::EngineText& text, const dialect::Literals& literals,
                                  const dialect::LazySeparators& separators, Bindings& bindings);

} // namespace oVELDRA::store
