#include "ScriptTarget.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaProperty>
#include <QPixmap>

#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace tornel {

namespace {

using Readiness = ScriptTarget::Readiness;

Readiness readyWhen(bool condition, const QString& obstacle)
{
    return condition ? Readiness{true, false, {}} : Readiness{false, false, obstacle};
}

Readiness compare(const QString& what, const QString& actual, const TextMatch& expected)
{
    return readyWhen(expected.matches(actual), u"%1 dice «%2»"_s.arg(what, actual));
}

constexpr std::array<std::pair<BoxIcon, QMessageBox::Icon>, 5> icons{{
    {BoxIcon::Plain, QMessageBox::NoIcon},
    {BoxIcon::Information, QMessageBox::Information},
    {BoxIcon::Question, QMessageBox::Question},
    {BoxIcon::Exclamation, QMessageBox::Warning},
    {BoxIcon::Critical, QMessageBox::Critical},
}};

QStringView name(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Plain:
        return u"plain";
    case BoxIcon::Information:
        return u"information";
    case BoxIcon::Question:
        return u"question";
    case BoxIcon::Exclamation:
        return u"exclamation";
    case BoxIcon::Critical:
        break;
    }
    return u"critical";
}

BoxIcon iconOf(const QMessageBox& box)
{
    const auto* const found =
        std::find_if(icons.begin(), icons.end(), [&box](const auto& pair) { return pair.second == box.icon(); });
    return found->first;
}

QDialogButtonBox::StandardButton standardButton(BoxButton button)
{
    switch (button) {
    case BoxButton::Ok:
        return QDialogButtonBox::Ok;
    case BoxButton::Cancel:
        return QDialogButtonBox::Cancel;
    case BoxButton::Yes:
        return QDialogButtonBox::Yes;
    case BoxButton::No:
        break;
    }
    return QDialogButtonBox::No;
}

QStringView name(BoxButton button)
{
    switch (button) {
    case BoxButton::Ok:
        return u"ok";
    case BoxButton::Cancel:
        return u"cancel";
    case BoxButton::Yes:
        return u"yes";
    case BoxButton::No:
        break;
    }
    return u"no";
}

QAbstractButton* boxButton(const QWidget& window, BoxButton button)
{
    const auto* const buttons = window.findChild<QDialogButtonBox*>();
    return buttons ? buttons->button(standardButton(button)) : nullptr;
}

/// What a widget shows, by whichever property its kind keeps it in.
std::optional<QString> shownText(const QWidget& widget)
{
    for (const char* const property : {"text", "plainText", "currentText", "title"}) {
        if (widget.metaObject()->indexOfProperty(property) >= 0) {
            return widget.property(property).toString();
        }
    }
    return std::nullopt;
}

/// What the keyboard types for a key, as far as text fields and buttons ask for it.
QString typedText(QKeyCombination key)
{
    if (key.keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        return {};
    }
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return u"\r"_s;
    case Qt::Key_Tab:
        return u"\t"_s;
    case Qt::Key_Backspace:
        return u"\b"_s;
    case Qt::Key_Delete:
        return u"\x7f"_s;
    case Qt::Key_Escape:
        return u"\x1b"_s;
    default:
        break;
    }
    const int code = key.key();
    if (code > 0xff) {
        return {};
    }
    const QChar c(code);
    return (key.keyboardModifiers() & Qt::ShiftModifier) ? QString(c) : QString(c.toLower());
}

void send(QWidget* widget, QEvent::Type type, QKeyCombination key, const QString& text)
{
    // What a keyboard sends for Shift+Tab.
    const bool backtab = key.key() == Qt::Key_Tab && (key.keyboardModifiers() & Qt::ShiftModifier);
    QKeyEvent event(type, backtab ? Qt::Key_Backtab : key.key(), key.keyboardModifiers(), text);
    QApplication::sendEvent(widget, &event);
}

QWidget* activeWindow(ScriptHost& host)
{
    QWidget* const modal = QApplication::activeModalWidget();
    return modal ? modal : &host.window();
}

/// Where the keyboard goes: the focus of the window in front, or the window itself.
QWidget* keyboardTarget(ScriptHost& host)
{
    QWidget* const window = activeWindow(host);
    if (!window->isActiveWindow()) {
        return nullptr;
    }
    QWidget* const focus = QApplication::focusWidget();
    return focus ? focus : window;
}

QString nameOf(const QWidget* widget)
{
    if (!widget) {
        return u"nada"_s;
    }
    const QString kind = QString::fromLatin1(widget->metaObject()->className());
    return widget->objectName().isEmpty() ? kind : widget->objectName();
}

/// A widget of the window in front, by its name.
template <typename Widget>
Widget* find(ScriptHost& host, const QString& name)
{
    QWidget* const window = activeWindow(host);
    if (window->objectName() == name) {
        return qobject_cast<Widget*>(window);
    }
    return window->findChild<Widget*>(name);
}

Readiness notFound(const QString& name)
{
    return readyWhen(false, u"no hay %1"_s.arg(name));
}

/// Whether a step can be done.
struct Check
{
    ScriptHost& host;

    [[nodiscard]] Readiness operator()(const step::HostField& step) const
    {
        return readyWhen(!ScriptTarget::hasModal() && host.window().findChild<QLineEdit*>(step.field),
                         u"el campo no está disponible"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Press& step) const
    {
        const auto* const button = host.window().findChild<QAbstractButton*>(step.button);
        return readyWhen(!ScriptTarget::hasModal() && button && button->isVisible() && button->isEnabled(),
                         u"el botón no está disponible"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Screen& step) const
    {
        return readyWhen(activeWindow(host)->objectName() == step.name, u"hay otra ventana"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Key& /*step*/) const { return keyboard(); }
    [[nodiscard]] Readiness operator()(const step::Type& /*step*/) const { return keyboard(); }
    [[nodiscard]] Readiness operator()(const step::Focus& step) const
    {
        const auto* const widget = find<QWidget>(host, step.name);
        return widget ? readyWhen(widget->isVisible() && widget->isEnabled() && activeWindow(host)->isActiveWindow(),
                                  u"no puede tomar el foco"_s)
                      : notFound(step.name);
    }
    [[nodiscard]] Readiness operator()(const step::Clear& /*step*/) const { return textBox(); }
    [[nodiscard]] Readiness operator()(const step::File& /*step*/) const { return textBox(); }
    [[nodiscard]] Readiness operator()(const step::Box& step) const
    {
        const auto* const box = qobject_cast<QMessageBox*>(activeWindow(host));
        return readyWhen(box && iconOf(*box) == step.icon && step.text.matches(box->text()),
                         box ? u"es otro cuadro"_s : u"no hay cuadro de mensaje"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Input& step) const
    {
        const auto* const dialog = qobject_cast<QInputDialog*>(activeWindow(host));
        return readyWhen(dialog && step.prompt.matches(dialog->labelText()),
                         dialog ? u"es otra pregunta"_s : u"no hay pregunta"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Answer& step) const
    {
        const QWidget* const window = activeWindow(host);
        const auto* const button = boxButton(*window, step.button);
        return readyWhen(button && button->isVisible() && button->isEnabled(), u"no hay tal botón"_s);
    }
    [[nodiscard]] Readiness operator()(const step::ExpectTitle& step) const
    {
        return compare(u"el título"_s, activeWindow(host)->windowTitle(), step.text);
    }
    [[nodiscard]] Readiness operator()(const step::ExpectText& step) const
    {
        const auto* const widget = find<QWidget>(host, step.name);
        const auto text = widget ? shownText(*widget) : std::nullopt;
        return text ? compare(step.name, *text, step.text) : notFound(step.name);
    }
    [[nodiscard]] Readiness operator()(const step::ExpectChecked& step) const
    {
        const auto* const button = find<QAbstractButton>(host, step.name);
        return button ? readyWhen(button->isChecked() == step.checked,
                                  step.checked ? u"no está marcado"_s : u"está marcado"_s)
                      : notFound(step.name);
    }
    [[nodiscard]] Readiness operator()(const step::ExpectFocus& step) const
    {
        const QWidget* const target = keyboardTarget(host);
        return readyWhen(target && target->objectName() == step.name, u"el foco está en otra parte"_s);
    }
    [[nodiscard]] Readiness operator()(const step::ExpectRows& step) const
    {
        const auto* const view = find<QAbstractItemView>(host, step.name);
        if (!view || !view->model()) {
            return notFound(step.name);
        }
        const int rows = view->model()->rowCount(view->rootIndex());
        return readyWhen(rows == step.rows, u"tiene %1"_s.arg(rows));
    }
    [[nodiscard]] Readiness operator()(const step::ExpectCell& step) const
    {
        const auto* const view = find<QAbstractItemView>(host, step.name);
        if (!view || !view->model()) {
            return notFound(step.name);
        }
        const QModelIndex cell = view->model()->index(step.row - 1, step.column - 1, view->rootIndex());
        return cell.isValid() ? compare(u"la celda"_s, cell.data(Qt::DisplayRole).toString(), step.text)
                              : readyWhen(false, u"no hay tal celda"_s);
    }
    [[nodiscard]] Readiness operator()(const step::ExpectCount& step) const
    {
        const ScriptAnswer answer = host.ask(step.database, step.statement, {});
        return answer.error.isEmpty() ? readyWhen(answer.rows == step.rows, u"da %1"_s.arg(answer.rows))
                                      : Readiness{false, true, answer.error};
    }
    [[nodiscard]] Readiness operator()(const step::ExpectValue& step) const
    {
        const ScriptAnswer answer = host.ask(step.database, step.statement, step.column);
        if (!answer.error.isEmpty()) {
            return {false, true, answer.error};
        }
        return answer.rows > 0 ? compare(step.column, answer.value, step.text)
                               : readyWhen(false, u"la consulta no da filas"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Shot& /*step*/) const
    {
        return readyWhen(activeWindow(host)->isVisible(), u"la ventana no está a la vista"_s);
    }
    [[nodiscard]] Readiness operator()(const step::Deadline& /*step*/) const { return readyWhen(true, {}); }

private:
    [[nodiscard]] Readiness keyboard() const
    {
        return readyWhen(keyboardTarget(host), u"la ventana no tiene el teclado"_s);
    }
    [[nodiscard]] Readiness textBox() const
    {
        return readyWhen(qobject_cast<QLineEdit*>(keyboardTarget(host)), u"el foco no está en un campo de texto"_s);
    }
};

/// Does a step.
struct Act
{
    ScriptHost& host;
    const QString& outputFolder;
    const ScriptTarget::Done& done;

    void operator()(const step::HostField& step) const
    {
        host.window().findChild<QLineEdit*>(step.field)->setText(step.value);
        done({});
    }
    void operator()(const step::Press& step) const
    {
        // Posted, because an entry operation blocks in its own loop until its screen is closed.
        auto* const button = host.window().findChild<QAbstractButton*>(step.button);
        QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
        QMetaObject::invokeMethod(
            &host.window(), [done = done] { done({}); }, Qt::QueuedConnection);
    }
    void operator()(const step::Key& step) const
    {
        // The press may block in a modal loop; as on a keyboard, the release then goes to the window that it opened.
        const QString text = typedText(step.key);
        QMetaObject::invokeMethod(
            &host.window(),
            [&host = host, key = step.key, text, done = done] {
                if (QWidget* const widget = keyboardTarget(host)) {
                    send(widget, QEvent::KeyRelease, key, text);
                }
                done({});
            },
            Qt::QueuedConnection);
        send(keyboardTarget(host), QEvent::KeyPress, step.key, text);
    }
    void operator()(const step::Type& step) const
    {
        for (const QChar c : step.text) {
            const QKeyCombination key(static_cast<Qt::Key>(c.toUpper().unicode()));
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                if (QWidget* const widget = keyboardTarget(host)) {
                    send(widget, type, key, QString(c));
                }
            }
        }
        done({});
    }
    void operator()(const step::File& step) const
    {
        const QDir folder(outputFolder);
        if (!folder.mkpath(u"."_s)) {
            done(u"no se pudo crear la carpeta %1"_s.arg(outputFolder));
            return;
        }
        // Not key by key: a file dialog would unfold a list of proposals over itself.
        qobject_cast<QLineEdit*>(keyboardTarget(host))->setText(folder.absoluteFilePath(step.name));
        done({});
    }
    void operator()(const step::Focus& step) const
    {
        find<QWidget>(host, step.name)->setFocus(Qt::OtherFocusReason);
        done({});
    }
    void operator()(const step::Clear& /*step*/) const
    {
        qobject_cast<QLineEdit*>(keyboardTarget(host))->clear();
        done({});
    }
    void operator()(const step::Answer& step) const
    {
        boxButton(*activeWindow(host), step.button)->click();
        done({});
    }
    void operator()(const step::Shot& step) const
    {
        const QString path = QDir(outputFolder).filePath(step.file);
        const bool written = QDir().mkpath(outputFolder) && activeWindow(host)->grab().save(path);
        done(written ? QString() : u"no se pudo escribir %1"_s.arg(path));
    }
    /// What is expected has been seen; nothing is left to do.
    template <typename Expectation>
    void operator()(const Expectation& /*step*/) const
    {
        done({});
    }
};

/// What a step waits for.
struct Describe
{
    QString operator()(const step::HostField& step) const { return u"el campo %1"_s.arg(step.field); }
    QString operator()(const step::Press& step) const { return u"el botón %1"_s.arg(step.button); }
    QString operator()(const step::Screen& step) const { return u"la pantalla %1"_s.arg(step.name); }
    QString operator()(const step::Key& step) const { return u"poder pulsar %1"_s.arg(step.spelled); }
    QString operator()(const step::Type& step) const { return u"poder escribir «%1»"_s.arg(step.text); }
    QString operator()(const step::File& step) const { return u"poder escribir el nombre de %1"_s.arg(step.name); }
    QString operator()(const step::Focus& step) const { return u"poder enfocar %1"_s.arg(step.name); }
    QString operator()(const step::Clear& /*step*/) const { return u"un campo de texto que vaciar"_s; }
    QString operator()(const step::Box& step) const
    {
        return u"un cuadro %1 %2"_s.arg(name(step.icon), step.text.describe());
    }
    QString operator()(const step::Input& step) const { return u"la pregunta %1"_s.arg(step.prompt.describe()); }
    QString operator()(const step::Answer& step) const { return u"el botón %1"_s.arg(name(step.button)); }
    QString operator()(const step::ExpectTitle& step) const { return u"el título %1"_s.arg(step.text.describe()); }
    QString operator()(const step::ExpectText& step) const
    {
        return u"en %1 el texto %2"_s.arg(step.name, step.text.describe());
    }
    QString operator()(const step::ExpectChecked& step) const
    {
        return (step.checked ? u"%1 marcado"_s : u"%1 sin marcar"_s).arg(step.name);
    }
    QString operator()(const step::ExpectFocus& step) const { return u"el foco en %1"_s.arg(step.name); }
    QString operator()(const step::ExpectRows& step) const { return u"%1 filas en %2"_s.arg(step.rows).arg(step.name); }
    QString operator()(const step::ExpectCell& step) const
    {
        return u"en %1, fila %2, columna %3, el texto %4"_s.arg(step.name)
            .arg(step.row)
            .arg(step.column)
            .arg(step.text.describe());
    }
    QString operator()(const step::ExpectCount& step) const
    {
        return u"%1 filas de «%2»"_s.arg(step.rows).arg(step.statement);
    }
    QString operator()(const step::ExpectValue& step) const
    {
        return u"%1 %2 en «%3»"_s.arg(step.column, step.text.describe(), step.statement);
    }
    QString operator()(const step::Shot& step) const { return u"poder capturar %1"_s.arg(step.file); }
    QString operator()(const step::Deadline& /*step*/) const { return u"el plazo"_s; }
};

} // namespace

ScriptTarget::ScriptTarget(ScriptHost& host, QString outputFolder)
    : m_host(host), m_outputFolder(std::move(outputFolder))
{}

ScriptTarget::Readiness ScriptTarget::check(const ScriptAction& action) const
{
    Readiness result = std::visit(Check{m_host}, action);
    // A message box stays until somebody answers it. Only the keyboard can still be on its way to it.
    const bool keyboard = std::holds_alternative<step::Key>(action) || std::holds_alternative<step::Type>(action);
    if (!result.ready && !keyboard && qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        result.hopeless = true;
    }
    return result;
}

void ScriptTarget::act(const ScriptAction& action, const Done& done)
{
    std::visit(Act{m_host, m_outputFolder, done}, action);
}

QString ScriptTarget::describe(const ScriptAction& action)
{
    return std::visit(Describe{}, action);
}

QString ScriptTarget::describeActive() const
{
    const QWidget* const window = activeWindow(m_host);
    if (const auto* const box = qobject_cast<const QMessageBox*>(window)) {
        return u"un cuadro %1 «%2»"_s.arg(name(iconOf(*box)), box->text());
    }
    if (const auto* const dialog = qobject_cast<const QInputDialog*>(window)) {
        return u"la pregunta «%1»"_s.arg(dialog->labelText());
    }
    return u"la ventana %1 «%2», con el foco en %3"_s.arg(nameOf(window), window->windowTitle(),
                                                          nameOf(QApplication::focusWidget()));
}

bool ScriptTarget::hasKeyboard()
{
    return QApplication::activeWindow() != nullptr;
}

void ScriptTarget::activateFront()
{
    activeWindow(m_host)->activateWindow();
}

bool ScriptTarget::hasModal()
{
    return QApplication::activeModalWidget() != nullptr;
}

void ScriptTarget::closeModal()
{
    QWidget* const window = QApplication::activeModalWidget();
    if (auto* const dialog = qobject_cast<QDialog*>(window)) {
        dialog->done(QDialog::Rejected); // a question without a cancel button refuses to be merely closed
    } else if (window) {
        window->close();
    }
}

} // namespace tornel
