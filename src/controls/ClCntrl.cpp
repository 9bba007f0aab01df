#include "ClCntrl.h"

#include <oVELDRA/RuntimeError.h>

#include <controls/ListMessages.h>
#include <controls/OleColor.h>
#include <core/Prompts.h>

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace oVELDRA::controls {

namespace {

enum class Direction { Next, Previous };

/// Types Tab or Shift+Tab into whatever has the focus.
void sendTab(Direction direction)
{
    const bool next = direction == Direction::Next;
    const int key = next ? Qt::Key_Tab : Qt::Key_Backtab;
    const Qt::KeyboardModifiers modifiers = next ? Qt::NoModifier : Qt::ShiftModifier;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (QWidget* target = QApplication::focusWidget()) {
            QKeyEvent event(type, key, modifiers, u"\t"_s);
            QApplication::sendEvent(target, &event);
        }
    }
}

bool isKeypadDecimal(const QKeyEvent& event)
{
    return event.modifiers().testFlag(Qt::KeypadModifier) &&
           (event.key() == Qt::Key_Period || event.key() == Qt::Key_Comma);
}

/// Whether a line edit is the entry part of another control.
bool belongsToControl(const QLineEdit& box)
{
    const QWidget* parent = box.parentWidget();
    return qobject_cast<const QComboBox*>(parent) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(parent) != nullptr;
}

} // namespace

ClCntrl::ClCntrl(core::Prompts& prompts, SeparatorSource source) : m_prompts(prompts), m_source(std::move(source))
{
    ObtenerDecimal();
}

std::optional<QString> ClCntrl::userSeparator()
{
    return QLocale().decimalPoint();
}

void ClCntrl::LstBuscarStr(const QString& text)
{
    if (!m_listBox) {
        throw RuntimeError(91);
    }
    const QAbstractItemModel& model = *m_listBox->model();
    const int column = m_listBox->modelColumn();
    const int row = findString(model, text, -1, column);
    m_listBox->setCurrentIndex(row < 0 ? QModelIndex() : model.index(row, column));
    if (row < 0) {
        m_listBox->clearSelection();
    }
}

void ClCntrl::BuscarCBO(const QString& text)
{
    if (!m_comboBox) {
        throw RuntimeError(91);
    }
    m_comboBox->setCurrentIndex(findString(*m_comboBox->model(), text, -1, m_comboBox->modelColumn()));
}

QString ClCntrl::Separador_Decimal()
{
    ObtenerDecimal();
    return m_decimalSeparator;
}

QString ClCntrl::Obtener_Sep_Decim()
{
    return Separador_Decimal();
}

void ClCntrl::ObtenerDecimal()
{
    const std::optional<QString> separator = m_source();
    m_decimalSeparator = separator.value_or(QString());
    if (!separator) {
        m_prompts.messageBox(u"No se puedo obtener la información"_s, core::PlainBox);
    }
}

void ClCntrl::sLinkText(QLineEdit* textBox)
{
    if (m_textBox) {
        m_textBox->removeEventFilter(this);
    }
    m_textBox = textBox;
    m_keypadDecimalDown = false;
    if (textBox == nullptr) {
        return;
    }
    textBox->installEventFilter(this);
    if (!tag().startsWith(u"BB")) {
        setFieldColor(*textBox, RestColor); // as it will look after its first focus
    }
}

void ClCntrl::sLinkListBox(QListView* listBox)
{
    if (m_listBox) {
        m_listBox->viewport()->removeEventFilter(this);
    }
    m_listBox = listBox;
    if (listBox != nullptr) {
        listBox->viewport()->setMouseTracking(true);
        listBox->viewport()->installEventFilter(this);
    }
}

void ClCntrl::sLinkCBoBox(QComboBox* comboBox)
{
    m_comboBox = comboBox;
}

void ClCntrl::VaciarTxt(QWidget& screen)
{
    const auto isOfScreen = [&screen](const QWidget& box) { return box.window() == screen.window(); };
    const auto lines = screen.findChildren<QLineEdit*>();
    for (QLineEdit* box : lines) {
        if (isOfScreen(*box) && !belongsToControl(*box)) {
            box->setText({});
        }
    }
    const auto plainTexts = screen.findChildren<QPlainTextEdit*>();
    for (QPlainTextEdit* box : plainTexts) {
        if (isOfScreen(*box)) {
            box->setPlainText({});
        }
    }
    const auto richTexts = screen.findChildren<QTextEdit*>();
    for (QTextEdit* box : richTexts) {
        if (isOfScreen(*box)) {
            box->setPlainText({});
        }
    }
}

bool ClCntrl::eventFilter(QObject* watched, QEvent* event)
{
    // Only the text box and the list box's viewport are watched. A control that is just dying is neither any more.
    if (qobject_cast<QLineEdit*>(watched) == nullptr) {
        if (event->type() == QEvent::MouseMove) {
            mouseMoveOverList(static_cast<const QMouseEvent*>(event)->position().toPoint());
        }
        return false;
    }
    switch (event->type()) {
    case QEvent::FocusIn:
        return gotFocus(*static_cast<const QFocusEvent*>(event));
    case QEvent::FocusOut:
        lostFocus();
        return false;
    case QEvent::KeyPress: {
        const auto& key = *static_cast<const QKeyEvent*>(event);
        return keyDown(key) || keyPress(key);
    }
    case QEvent::KeyRelease:
        if (isKeypadDecimal(*static_cast<const QKeyEvent*>(event))) {
            m_keypadDecimalDown = false;
        }
        return false;
    default:
        return false;
    }
}

bool ClCntrl::gotFocus(const QFocusEvent& event)
{
    const QString style = tag();
    const bool marked = style.endsWith(u"#F6");
    if (!marked && style.startsWith(u"BB")) {
        if (event.reason() != Qt::TabFocusReason && event.reason() != Qt::BacktabFocusReason) {
            return false;
        }
        // A box entered with Tab selects its text on its own account; this style is to be left as it is.
        QFocusEvent quiet(QEvent::FocusIn, Qt::OtherFocusReason);
        m_textBox->event(&quiet);
        return true;
    }
    setFieldColor(*m_textBox, marked ? MarkedFocusColor : FocusColor);
    m_textBox->setSelection(0, static_cast<int>(m_textBox->text().size()));
    return false;
}

void ClCntrl::lostFocus()
{
    m_keypadDecimalDown = false; // the release goes to another control
    if (!tag().startsWith(u"BB")) {
        setFieldColor(*m_textBox, RestColor);
    }
}

bool ClCntrl::keyDown(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down) {
        const Direction direction = event.key() == Qt::Key_Up ? Direction::Previous : Direction::Next;
        QMetaObject::invokeMethod(
            this, [direction] { sendTab(direction); }, Qt::QueuedConnection);
        return true;
    }
    if (isKeypadDecimal(event)) {
        m_keypadDecimalDown = true;
    }
    return false;
}

bool ClCntrl::keyPress(const QKeyEvent& event)
{
    const bool plain = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::NoModifier;
    if (plain && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)) {
        sendTab(Direction::Next);
        return true;
    }
    // On some keyboards the keypad's key types a comma by itself, which under a point locale would be grouping.
    const bool decimal = event.text() == u"." || isKeypadDecimal(event);
    if (m_keypadDecimalDown && decimal && !m_decimalSeparator.isEmpty()) {
        const QChar separator = m_decimalSeparator.front();
        if (event.text() == separator) {
            return false;
        }
        QKeyEvent typed(QEvent::KeyPress, separator.unicode(), event.modifiers(), QString(separator),
                        event.isAutoRepeat(), static_cast<quint16>(event.count()));
        m_textBox->event(&typed);
        return true;
    }
    return false;
}

void ClCntrl::mouseMoveOverList(QPoint point)
{
    // 65535 and not 65536 is meant: the list's answer under this packing is what users know.
    const int item = itemFromPoint(*m_listBox, static_cast<quint32>(point.y() * 65535 + point.x()));
    const QAbstractItemModel& model = *m_listBox->model();
    QString text;
    if (item >= 0 && item <= model.rowCount(m_listBox->rootIndex())) {
        text = model.index(item, m_listBox->modelColumn(), m_listBox->rootIndex()).data().toString();
    }
    // Tool tips read markup; an item's text is none.
    m_listBox->setToolTip(Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpacePre) : text);
}

QString ClCntrl::tag() const
{
    return m_textBox->property("Tag").toString();
}

} // namespace oVELDRA::controls
