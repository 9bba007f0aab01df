#include "Form.h"

#include <oVELDRA/RuntimeError.h>

#include <controls/ClCntrl.h>
#include <controls/ColumnWidths.h>
#include <controls/Contrast.h>
#include <controls/FocusFrame.h>
#include <controls/ListView.h>
#include <runtime/Settings.h>

#include <QApplication>
#include <QCheckBox>
#include <QChildEvent>
#include <QFontMetrics>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace oVELDRA::controls {

namespace {

/// The application of the component's own settings; a screen is a section of it.
constexpr QStringView settingsOf = u"oVELDRA";

/// The modifiers that tell keys apart. The keypad's keys count as their twins.
constexpr Qt::KeyboardModifiers TellingModifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;

int withoutKeypad(int key)
{
    return key == Qt::Key_Enter ? static_cast<int>(Qt::Key_Return) : key;
}

void enlarge(QWidget& label, double factor)
{
    QFont font = label.font();
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * factor);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * factor));
    }
    font.setBold(true);
    label.setFont(font);
}

/// A text box as wide as so many characters where there is room, and narrower where there is none.
class TextBox final : public QLineEdit
{
public:
    TextBox(int characters, QWidget* parent) : QLineEdit(parent), m_characters(characters)
    {
        constexpr int atLeast = 16;
        setMinimumWidth(widthOf(std::min(characters, atLeast)));
    }

    [[nodiscard]] QSize sizeHint() const override { return {widthOf(m_characters), QLineEdit::sizeHint().height()}; }

private:
    /// With room for the frame and the cursor.
    [[nodiscard]] int widthOf(int characters) const { return (characters + 2) * fontMetrics().horizontalAdvance(u'0'); }

    int m_characters;
};

} // namespace

Form::Form(core::Component& component, const QString& name, const QString& caption)
    : m_component(component), m_body(new QVBoxLayout(this))
{
    setObjectName(name);
    setWindowTitle(caption);
    setAccessibleName(caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    const int unit = fontMetrics().height();
    m_body->setContentsMargins(unit, unit, unit, unit / 2);
    m_body->setSpacing(unit / 2);
    // The layout's own constraint does not know that texts in a narrow window need more lines.
    m_body->setSizeConstraint(QLayout::SetNoConstraint);
    new FocusFrame(*this);
    makeSelectionReadable();
    watch(*this);
}

Form::~Form() = default;

void Form::showModal()
{
    // Asked for now: loading may open another form, and after that one no window counts as active for a moment.
    const QPointer<const QWidget> opener = QApplication::activeWindow();
    m_binders.clear();
    designState();
    Form_Load();
    watch(*this); // the binders have come before the table
    if (!testAttribute(Qt::WA_Resized)) {
        resize(sizeHint().boundedTo(
            screen()->availableSize())); // by itself it would take two thirds of the screen at most
    }
    // Else the host's window could come to lie over the form that it waits for. (Right after its last closing, the form
    // itself may still count as the active window.)
    const bool isHost = opener != nullptr && opener != this;
    winId(); // there is a window handle only then
    windowHandle()->setTransientParent(isHost ? opener->windowHandle() : nullptr);
    exec();
    saveWidths();
}

void Form::unload()
{
    done(Rejected);
}

QSize Form::minimumSizeHint() const
{
    const QSize least = QDialog::minimumSizeHint();
    return {least.width(), std::max(least.height(), m_body->totalMinimumHeightForWidth(least.width()))};
}

void Form::setKeys(std::vector<KeyBinding> keys)
{
    m_keys = std::move(keys);
}

void Form::bindTextBoxes(std::initializer_list<QLineEdit*> textBoxes)
{
    for (QLineEdit* textBox : textBoxes) {
        m_binders.push_back(std::make_unique<ClCntrl>(m_component.prompts()));
        m_binders.back()->sLinkText(textBox);
    }
}

QLabel* Form::addTitle(const QString& name, const QString& text)
{
    QLabel* title = addLabel(name, text);
    enlarge(*title, 1.25);
    return title;
}

QLabel* Form::addText(const QString& name, const QString& text)
{
    QLabel* label = addLabel(name, text);
    label->setWordWrap(true);
    return label;
}

QFormLayout* Form::addFields()
{
    auto* fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    fields->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    fields->setHorizontalSpacing(fontMetrics().height());
    fields->setVerticalSpacing(fontMetrics().height() / 3);
    m_body->addLayout(fields);
    return fields;
}

QLineEdit* Form::addTextBox(QFormLayout& fields, const QString& name, const QString& label, int characters)
{
    auto* textBox = new TextBox(characters, this);
    textBox->setObjectName(name);
    textBox->setAccessibleName(label);
    auto* labelBefore = new QLabel(label, this);
    labelBefore->setBuddy(textBox);
    fields.addRow(labelBefore, textBox);
    return textBox;
}

QLabel* Form::addValue(QFormLayout& fields, const QString& name, const QString& label)
{
    auto* value = new QLabel(this);
    value->setObjectName(name);
    value->setAccessibleName(label);
    value->setTextFormat(Qt::PlainText);
    fields.addRow(label, value);
    return value;
}

void Form::showValue(QLabel& value, const QString& text)
{
    value.setText(text);
    value.setAccessibleDescription(text);
}

QCheckBox* Form::addCheckBox(const QString& name, const QString& text)
{
    auto* checkBox = new QCheckBox(text, this);
    checkBox->setObjectName(name);
    checkBox->setAccessibleName(text);
    m_body->addWidget(checkBox);
    return checkBox;
}

ListView* Form::addList(const QString& name, const QString& accessibleName, std::vector<ListColumn> columns)
{
    auto* list = new ListView(std::move(columns), this);
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    m_body->addWidget(list, 1);
    m_lists.push_back(list);
    loadWidths(*list);
    return list;
}

QLabel* Form::addHint(const QString& name, const QString& text)
{
    auto* line = new QFrame(this);
    line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
    m_body->addWidget(line);
    QLabel* hint = addLabel(name, text);
    hint->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    hint->setWordWrap(true);
    return hint;
}

bool Form::event(QEvent* event)
{
    const bool recognized = QDialog::event(event);
    switch (event->type()) {
    case QEvent::LayoutRequest:
    case QEvent::Resize:
        keepTextsWhole();
        break;
    case QEvent::ApplicationPaletteChange:
    case QEvent::StyleChange:
        makeSelectionReadable();
        break;
    default:
        break;
    }
    return recognized;
}

bool Form::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        if (QObject* child = static_cast<const QChildEvent*>(event)->child(); child->isWidgetType()) {
            watch(*child);
        }
        break;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto* receiver = qobject_cast<const QWidget*>(watched);
        if (receiver == nullptr || receiver->window() != this) {
            break;
        }
        const KeyBinding* binding = bindingOf(*static_cast<const QKeyEvent*>(event), *receiver);
        if (binding == nullptr) {
            break;
        }
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            const auto procedure = binding->procedure; // which may set another table
            procedure();
        }
        return true;
    }
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void Form::keyPressEvent(QKeyEvent* event)
{
    event->ignore(); // a dialog would close on Escape and press buttons on Enter
}

void Form::watch(QObject& object)
{
    object.installEventFilter(this); // in front of the filters that are there
    const auto widgets = object.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        widget->installEventFilter(this);
    }
}

const KeyBinding* Form::bindingOf(const QKeyEvent& event, const QWidget& receiver) const
{
    const int key = withoutKeypad(event.key());
    const Qt::KeyboardModifiers modifiers = event.modifiers() & TellingModifiers;
    const auto fits = [&](const KeyBinding& binding) {
        return binding.key == key && binding.modifiers.value_or(modifiers) == modifiers &&
               (binding.control == WholeForm || binding.control == &receiver ||
                binding.control->isAncestorOf(&receiver));
    };
    const auto found = std::find_if(m_keys.begin(), m_keys.end(), fits);
    return found == m_keys.end() ? nullptr : &*found;
}

QLabel* Form::addLabel(const QString& name, const QString& text)
{
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setAccessibleName(text);
    m_body->addWidget(label);
    return label;
}

void Form::makeSelectionReadable()
{
    constexpr double gradient = 1.2; // styles draw a selection lighter at one end than its colour
    const QPalette theme = QApplication::palette(this);
    QPalette own;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        own.setColor(group, QPalette::Highlight,
                     readableOn(theme.color(group, QPalette::Highlight), theme.color(group, QPalette::HighlightedText),
                                ReadableContrast + gradient));
    }
    setPalette(own);
}

void Form::keepTextsWhole()
{
    const QSize least = QDialog::minimumSizeHint();
    const int across = std::max(width(), least.width());
    setMinimumSize(least.width(), std::max(least.height(), m_body->totalMinimumHeightForWidth(across)));
}

void Form::loadWidths(ListView& list) const
{
    try {
        list.widths().setText(m_component.settings().get(settingsOf.toString(), objectName(), list.objectName()));
    } catch (const RuntimeError&) {
        return; // a list without a name, or settings that cannot be read: as designed
    }
}

void Form::saveWidths() const
{
    for (ListView* list : m_lists) {
        ColumnWidths& widths = list->widths();
        if (!widths.isChanged()) {
            continue;
        }
        try {
            m_component.settings().save(settingsOf.toString(), objectName(), list->objectName(), widths.text());
            widths.setKept();
        } catch (const RuntimeError&) {
            continue; // not worth a box; the next closing tries again
        }
    }
}

} // namespace oVELDRA::controls
