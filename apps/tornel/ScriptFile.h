#pragma once

#include <QKeyCombination>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <chrono>
#include <variant>
#include <vector>

namespace tornel {

/// A text that is expected: all of it, or a part.
struct TextMatch
{
    QString text;
    bool part = false;

    [[nodiscard]] bool matches(QStringView actual) const { return part ? actual.contains(text) : actual == text; }
    /// «text», or: que contenga «text»
    [[nodiscard]] QString describe() const;

    friend bool operator==(const TextMatch&, const TextMatch&) = default;
};

enum class BoxIcon { Plain, Information, Question, Exclamation, Critical };
enum class BoxButton { Ok, Cancel, Yes, No };
enum class ScriptDatabase { Inputs, Nomenclature, Host };

/// The steps of a script. docs/scripts.md says how each is written.
namespace step {

struct HostField
{
    QString field;
    QString value;
};
struct Press
{
    QString button;
};
struct Screen
{
    QString name;
};
struct Key
{
    QKeyCombination key;
    QString spelled;
};
struct Type
{
    QString text;
};
/// Puts the path of a file in the output folder into the text box that has the focus.
struct File
{
    QString name;
};
struct Focus
{
    QString name;
};
struct Clear
{};
struct Box
{
    BoxIcon icon = BoxIcon::Plain;
    TextMatch text;
};
struct Input
{
    TextMatch prompt;
};
struct Answer
{
    BoxButton button = BoxButton::Ok;
};
struct ExpectTitle
{
    TextMatch text;
};
struct ExpectText
{
    QString name;
    TextMatch text;
};
struct ExpectChecked
{
    QString name;
    bool checked = false;
};
struct ExpectFocus
{
    QString name;
};
struct ExpectRows
{
    QString name;
    int rows = 0;
};
struct ExpectCell
{
    QString name;
    int row = 0;    ///< from 1
    int column = 0; ///< from 1
    TextMatch text;
};
struct ExpectCount
{
    ScriptDatabase database = ScriptDatabase::Inputs;
    QString statement;
    int rows = 0;
};
struct ExpectValue
{
    ScriptDatabase database = ScriptDatabase::Inputs;
    QString statement;
    QString column;
    TextMatch text;
};
struct Shot
{
    QString file;
};
struct Deadline
{
    std::chrono::seconds time{0};
};

} // namespace step

using ScriptAction =
    std::variant<step::HostField, step::Press, step::Screen, step::Key, step::Type, step::Focus, step::Clear, step::Box,
                 step::Input, step::Answer, step::ExpectTitle, step::ExpectText, step::ExpectChecked, step::ExpectFocus,
                 step::ExpectRows, step::ExpectCell, step::ExpectCount, step::ExpectValue, step::Shot, step::Deadline,
                 step::File>;

struct ScriptStep
{
    int line = 0; ///< from 1
    ScriptAction action;
};

struct ScriptProblem
{
    int line = 0;
    QString message;
};

/// A script as it was read: its steps, or what is wrong with it.
struct ScriptFile
{
    std::vector<ScriptStep> steps;
    std::vector<ScriptProblem> problems;

    [[nodiscard]] static ScriptFile parse(QStringView text);
    /// As parse(); a file that cannot be read is a problem in line 0.
    [[nodiscard]] static ScriptFile load(const QString& path);

    /// "line 3: …" for every problem, one per line.
    [[nodiscard]] QString describeProblems(const QString& path) const;
};

} // namespace tornel
