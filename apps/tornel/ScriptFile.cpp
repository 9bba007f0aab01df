#include "ScriptFile.h"

#include <QFile>
#include <QKeySequence>

#include <array>
#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace tornel {

namespace {

/// Thrown inside one line, caught at its end.
struct LineError
{
    QString message;
};

struct Word
{
    QString text;
    bool quoted = false;
};

QString quotedWord(QStringView line, qsizetype& at)
{
    QString text;
    ++at;
    for (; at < line.size(); ++at) {
        const QChar c = line.at(at);
        if (c == u'"') {
            ++at;
            if (at < line.size() && !line.at(at).isSpace()) {
                throw LineError{u"falta un blanco después de las comillas"_s};
            }
            return text;
        }
        if (c != u'\\') {
            text += c;
            continue;
        }
        ++at;
        const QChar escaped = at < line.size() ? line.at(at) : QChar();
        if (escaped == u'n') {
            text += u'\n';
        } else if (escaped == u'"' || escaped == u'\\') {
            text += escaped;
        } else {
            throw LineError{u"después de \\ va n, \" o \\"_s};
        }
    }
    throw LineError{u"faltan las comillas de cierre"_s};
}

std::vector<Word> split(QStringView line)
{
    std::vector<Word> words;
    qsizetype at = 0;
    while (at < line.size()) {
        const QChar c = line.at(at);
        if (c.isSpace()) {
            ++at;
        } else if (c == u'#') {
            break;
        } else if (c == u'"') {
            words.push_back({quotedWord(line, at), true});
        } else {
            const qsizetype from = at;
            while (at < line.size() && !line.at(at).isSpace()) {
                ++at;
            }
            words.push_back({line.sliced(from, at - from).toString(), false});
        }
    }
    return words;
}

/// The words of one line, taken one after the other.
class Arguments
{
public:
    explicit Arguments(std::vector<Word> words) : m_words(std::move(words)) {}

    QString word(const QString& what)
    {
        if (m_at >= m_words.size()) {
            throw LineError{u"falta "_s + what};
        }
        return m_words[m_at++].text;
    }

    /// A text in quotes, after the word contains when a part of it will do.
    TextMatch match(const QString& what)
    {
        TextMatch match;
        if (m_at < m_words.size() && !m_words[m_at].quoted && m_words[m_at].text == u"contains") {
            match.part = true;
            ++m_at;
        }
        match.text = word(what);
        return match;
    }

    int number(const QString& what, int least)
    {
        const QString text = word(what);
        bool ok = false;
        const int value = text.toInt(&ok);
        if (!ok || value < least) {
            throw LineError{u"%1 debe ser un número entero desde %2, no «%3»"_s.arg(what).arg(least).arg(text)};
        }
        return value;
    }

    template <typename Value, std::size_t Size>
    Value choice(const QString& what, const std::array<std::pair<QStringView, Value>, Size>& choices)
    {
        const QString text = word(what);
        QStringList names;
        for (const auto& [name, value] : choices) {
            if (text == name) {
                return value;
            }
            names.append(name.toString());
        }
        throw LineError{u"%1 debe ser %2, no «%3»"_s.arg(what, names.join(u", "_s), text)};
    }

    void end() const
    {
        if (m_at < m_words.size()) {
            throw LineError{u"sobra «%1»"_s.arg(m_words[m_at].text)};
        }
    }

private:
    std::vector<Word> m_words;
    std::size_t m_at = 0;
};

constexpr std::array<std::pair<QStringView, BoxIcon>, 5> boxIcons{{
    {u"plain", BoxIcon::Plain},
    {u"information", BoxIcon::Information},
    {u"question", BoxIcon::Question},
    {u"exclamation", BoxIcon::Exclamation},
    {u"critical", BoxIcon::Critical},
}};
constexpr std::array<std::pair<QStringView, BoxButton>, 4> boxButtons{{
    {u"ok", BoxButton::Ok},
    {u"cancel", BoxButton::Cancel},
    {u"yes", BoxButton::Yes},
    {u"no", BoxButton::No},
}};
constexpr std::array<std::pair<QStringView, ScriptDatabase>, 3> databases{{
    {u"inputs", ScriptDatabase::Inputs},
    {u"nomenclature", ScriptDatabase::Nomenclature},
    {u"host", ScriptDatabase::Host},
}};
constexpr std::array<std::pair<QStringView, bool>, 2> truths{{{u"true", true}, {u"false", false}}};

step::Key key(const QString& spelled)
{
    const QKeySequence keys(spelled, QKeySequence::PortableText);
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown) {
        throw LineError{u"«%1» no es una tecla"_s.arg(spelled)};
    }
    return {keys[0], spelled};
}

step::Shot shot(const QString& file)
{
    // It stands in the output folder and nowhere else.
    if (!file.endsWith(u".png"_s) || file.contains(u'/') || file.contains(u'\\') || file.startsWith(u'.')) {
        throw LineError{u"«%1» no es un nombre de archivo PNG"_s.arg(file)};
    }
    return {file};
}

ScriptAction expectation(Arguments& arguments)
{
    using Reader = std::function<ScriptAction(Arguments&)>;
    static const std::array<std::pair<QStringView, Reader>, 8> kinds{{
        {u"title", [](Arguments& a) { return step::ExpectTitle{a.match(u"el título"_s)}; }},
        {u"text",
         [](Arguments& a) {
             QString name = a.word(u"el nombre"_s);
             return step::ExpectText{std::move(name), a.match(u"el texto"_s)};
         }},
        {u"checked",
         [](Arguments& a) {
             QString name = a.word(u"el nombre"_s);
             return step::ExpectChecked{std::move(name), a.choice(u"el valor"_s, truths)};
         }},
        {u"focus", [](Arguments& a) { return step::ExpectFocus{a.word(u"el nombre"_s)}; }},
        {u"rows",
         [](Arguments& a) {
             QString name = a.word(u"el nombre"_s);
             return step::ExpectRows{std::move(name), a.number(u"la cantidad de filas"_s, 0)};
         }},
        {u"cell",
         [](Arguments& a) {
             step::ExpectCell cell;
             cell.name = a.word(u"el nombre"_s);
             cell.row = a.number(u"la fila"_s, 1);
             cell.column = a.number(u"la columna"_s, 1);
             cell.text = a.match(u"el texto"_s);
             return cell;
         }},
        {u"count",
         [](Arguments& a) {
             step::ExpectCount count;
             count.database = a.choice(u"la base de datos"_s, databases);
             count.statement = a.word(u"la consulta"_s);
             count.rows = a.number(u"la cantidad de filas"_s, 0);
             return count;
         }},
        {u"value",
         [](Arguments& a) {
             step::ExpectValue value;
             value.database = a.choice(u"la base de datos"_s, databases);
             value.statement = a.word(u"la consulta"_s);
             value.column = a.word(u"la columna"_s);
             value.text = a.match(u"el texto"_s);
             return value;
         }},
    }};
    return arguments.choice(u"lo que se espera"_s, kinds)(arguments);
}

ScriptAction action(Arguments& arguments)
{
    using Reader = std::function<ScriptAction(Arguments&)>;
    static const std::array<std::pair<QStringView, Reader>, 14> verbs{{
        {u"host",
         [](Arguments& a) {
             QString field = a.word(u"el campo"_s);
             return step::HostField{std::move(field), a.word(u"el valor"_s)};
         }},
        {u"press", [](Arguments& a) { return step::Press{a.word(u"el botón"_s)}; }},
        {u"screen", [](Arguments& a) { return step::Screen{a.word(u"el nombre"_s)}; }},
        {u"key", [](Arguments& a) { return key(a.word(u"la tecla"_s)); }},
        {u"file", [](Arguments& a) { return step::File{a.word(u"el archivo"_s)}; }},
        {u"type", [](Arguments& a) { return step::Type{a.word(u"el texto"_s)}; }},
        {u"focus", [](Arguments& a) { return step::Focus{a.word(u"el nombre"_s)}; }},
        {u"clear", [](Arguments&) { return step::Clear{}; }},
        {u"box",
         [](Arguments& a) {
             const BoxIcon icon = a.choice(u"el icono"_s, boxIcons);
             return step::Box{icon, a.match(u"el texto"_s)};
         }},
        {u"input", [](Arguments& a) { return step::Input{a.match(u"la pregunta"_s)}; }},
        {u"answer", [](Arguments& a) { return step::Answer{a.choice(u"la respuesta"_s, boxButtons)}; }},
        {u"expect", expectation},
        {u"shot", [](Arguments& a) { return shot(a.word(u"el archivo"_s)); }},
        {u"deadline", [](Arguments& a) { return step::Deadline{std::chrono::seconds(a.number(u"el plazo"_s, 1))}; }},
    }};
    ScriptAction read = arguments.choice(u"el paso"_s, verbs)(arguments);
    arguments.end();
    return read;
}

} // namespace

QString TextMatch::describe() const
{
    return (part ? u"que contenga «%1»"_s : u"«%1»"_s).arg(text);
}

ScriptFile ScriptFile::parse(QStringView text)
{
    ScriptFile script;
    int number = 0;
    for (const QStringView line : text.split(u'\n')) {
        ++number;
        try {
            std::vector<Word> words = split(line);
            if (!words.empty()) {
                Arguments arguments(std::move(words));
                script.steps.push_back({number, action(arguments)});
            }
        } catch (const LineError& error) {
            script.problems.push_back({number, error.message});
        }
    }
    return script;
}

ScriptFile ScriptFile::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ScriptFile script;
        script.problems.push_back({0, u"no se puede leer: %1"_s.arg(file.errorString())});
        return script;
    }
    return parse(QString::fromUtf8(file.readAll()));
}

QString ScriptFile::describeProblems(const QString& path) const
{
    QStringList lines;
    for (const ScriptProblem& problem : problems) {
        lines.append(u"%1:%2: %3"_s.arg(path, QString::number(problem.line), problem.message));
    }
    return lines.join(u'\n');
}

} // namespace tornel
