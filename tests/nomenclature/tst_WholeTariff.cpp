#include "doubles/FixedClock.h"
#include "doubles/MemorySettings.h"
#include "doubles/TestComponent.h"
#include "doubles/TestStores.h"

#include <oVELDRA/Store.h>

#include <nomenclature/FrmPosicion.h>
#include <nomenclature/ProcesarNCM.h>
#include <nomenclature/SuffixText.h>
#include <nomenclature/VerificarSufijos.h>

#include <QListView>
#include <QSet>
#include <QTest>

#include <tariff/Tariff.h>
#include <tornel/SqlLiteral.h>
#include <tornel/TableLoader.h>
#include <utility>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using namespace oVELDRA::nomenclature;

namespace {

/// A user who answers every question for a value with a text, and with a number when the text is refused.
class PatientUser final : public core::Prompts
{
public:
    core::BoxAnswer messageBox(const QString& text, core::BoxStyle style, const QString& /*title*/) override
    {
        boxes.append(text);
        m_refused = true;
        return style == core::QuestionBox ? core::AnswerYes : core::AnswerOk;
    }

    QString inputBox(const QString& /*prompt*/, const QString& /*title*/, const QString& /*proposal*/) override
    {
        ++questions;
        return std::exchange(m_refused, false) ? u"(150)"_s : u" muestra"_s;
    }

    QStringList boxes;
    int questions = 0;

private:
    bool m_refused = false;
};

} // namespace

/// The rules over every position of the tariff sample, in a real store.
class tst_WholeTariff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyPositionIsFoundInDottedAndCommaForm();
    void enteredSuffixesOfEveryPositionVerifyWithoutAsking();
    void searchForEverythingListsTheWholeTariff();

private:
    std::unique_ptr<tariff::Tariff> m_tariff;
    std::shared_ptr<ConexionDB> m_db;
};

void tst_WholeTariff::initTestCase()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
    m_tariff = std::make_unique<tariff::Tariff>(tariff::Tariff::builtIn());
    QCOMPARE(m_tariff->positions().size(), std::size_t{33'110});
    QCOMPARE(m_tariff->suffixes().size(), std::size_t{4'607});

    namespace sql = tornel::sql;
    m_db = createStore(TestStores::newUrl(), Database::Nomenclature);
    const auto burst = m_db->beginBurst();
    const auto uncounted = [] {};
    tornel::TableLoader positions(*m_db, u"NCM", u"[001],[002],[003],[004],[010]", uncounted);
    for (const tariff::TariffPosition& row : m_tariff->positions()) {
        positions.insert({sql::text(row.subheading), sql::text(row.opening), sql::text(row.control),
                          sql::textOrNull(row.heading), sql::textOrNull(row.text)});
    }
    tornel::TableLoader rules(*m_db, u"sufidos", u"sim,sufijo,detalle", uncounted);
    for (const tariff::TariffSuffix& row : m_tariff->suffixes()) {
        rules.insert({sql::text(row.selector), sql::text(row.suffix), sql::textOrNull(row.detail)});
    }
    burst->commit();
}

void tst_WholeTariff::everyPositionIsFoundInDottedAndCommaForm()
{
    TestComponent component;
    component.state.g_DBNCM.assign(m_db);
    for (const tariff::TariffPosition& row : m_tariff->positions()) {
        const QString stored = row.joined();
        QString dotted = stored;
        QCOMPARE(ProcesarNCM(component, dotted), stored);
        QString withCommas = stored;
        withCommas.replace(u'.', u',');
        QCOMPARE(ProcesarNCM(component, withCommas), stored);
        QCOMPARE(withCommas, stored);
    }
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_WholeTariff::enteredSuffixesOfEveryPositionVerifyWithoutAsking()
{
    QSet<QString> selectors;
    for (const tariff::TariffSuffix& row : m_tariff->suffixes()) {
        selectors.insert(row.selector);
    }
    PatientUser user;
    MemorySettings settings;
    const FixedClock clock;
    core::Component component(user, settings, clock);
    component.state.g_DBNCM.assign(m_db);
    int walked = 0;
    int lists = 0;
    const OptionChooser firstOption = [&lists](core::Component& shown, const QStringList& lines) {
        ++lists;
        shown.state.chosenSuffix = lines.value(1);
    };
    for (const tariff::TariffPosition& row : m_tariff->positions()) {
        const QString position = row.joined();
        const auto keys = suffixKeys(position);
        if (std::none_of(keys.begin(), keys.end(), [&](const QString& key) { return selectors.contains(key); })) {
            continue;
        }
        ++walked;
        const QString entered = VerificarSufijos(component, position, {}, 1, firstOption);
        QCOMPARE(entered, m_tariff->sampleSuffixes(row));
        for (const QString& text : std::as_const(user.boxes)) {
            QCOMPARE(text, u"Debe Ingresar un Valor Númerico"_s);
        }
        user.boxes.clear();
        const int questions = user.questions;
        const int listsBefore = lists;
        QCOMPARE(VerificarSufijos(component, position, entered, 0, firstOption), entered);
        QVERIFY(user.boxes.isEmpty());
        QCOMPARE(user.questions, questions);
        QCOMPARE(lists, listsBefore);
    }
    qInfo("%d positions with rules, %d questions, %d option lists", walked, user.questions, lists);
    QVERIFY(walked > 0 && user.questions > 0 && lists > 0);
}

void tst_WholeTariff::searchForEverythingListsTheWholeTariff()
{
    TestComponent component;
    component.state.g_DBNCM.assign(m_db);
    FrmPosicion form(component);
    form.BuscarNCM();
    const auto* model = form.findChild<QListView*>(u"LstNCM"_s)->model();
    QCOMPARE(model->rowCount(), 33'110);
    for (int row = 0; row < model->rowCount(); ++row) {
        QCOMPARE(model->index(row, 0).data().toString(),
                 m_tariff->positions().at(static_cast<std::size_t>(row)).joined());
    }
}

QTEST_MAIN(tst_WholeTariff)
#include "tst_WholeTariff.moc"
