#pragma once

#include "catalog/FormFixture.h"

#include <QIcon>

namespace oVELDRA::catalog {

/// Every row of a list has a picture before its first cell, and no other cell has one.
inline void checkRowImages(const controls::ListView& list)
{
    for (int row = 0; row < list.rowCount(); ++row) {
        const QModelIndex code = list.model()->index(row, 0);
        QVERIFY(!code.data(Qt::DecorationRole).value<QIcon>().isNull());
        QVERIFY(!code.siblingAtColumn(1).data(Qt::DecorationRole).isValid());
    }
}

/// How a list form deletes its selected row.
struct Deletion
{
    QString load;       ///< the query that fills the list
    QString question;   ///< what the user is asked before
    QString dependents; ///< the statement that runs first, for what belongs to the row
    QString row;        ///< the statement for the row itself
    QString location;   ///< where its errors are reported from
};

// The checks below are given the fixture of a list form and open the form with two rows, the first selected.

template <typename Fixture>
void checkNoDeletesNothing(Fixture& fixture, const Deletion& deletion)
{
    fixture.willListTwo();
    fixture.component.prompts.willAnswer(core::AnswerNo);
    QVERIFY(controls::whileOpen(fixture.form, [] { controls::pressKey(Qt::Key_Delete); }));
    QCOMPARE(fixture.boxes(), QList{box(deletion.question, core::QuestionBox)});
    QCOMPARE(fixture.inputs->events(), QStringList{deletion.load});
}

template <typename Fixture>
void checkYesDeletesInOneBurstAndReloads(Fixture& fixture, const Deletion& deletion)
{
    fixture.willListTwo();
    fixture.inputs->willAffect(QStringLiteral("delete"), 1);
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QStringList atTheQuestion;
    fixture.component.prompts.whileShown = [&] { atTheQuestion = fixture.inputs->events(); };
    QVERIFY(controls::whileOpen(fixture.form, [] { controls::pressKey(Qt::Key_Delete); }));
    QCOMPARE(atTheQuestion, QStringList{deletion.load});
    QCOMPARE(fixture.inputs->events(), (QStringList{deletion.load, QStringLiteral("<begin>"), deletion.dependents,
                                                    deletion.row, QStringLiteral("<commit>"), deletion.load}));
    QCOMPARE(fixture.inputs->commits(), 1);
    QCOMPARE(fixture.boxes().size(), 1);
}

template <typename Fixture>
void checkRowThatIsGoneIsNoReload(Fixture& fixture, const Deletion& deletion)
{
    fixture.willListTwo();
    fixture.inputs->willAffect(deletion.dependents, 3);
    fixture.inputs->willAffect(deletion.row, 0);
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(controls::whileOpen(fixture.form, [] { controls::pressKey(Qt::Key_Delete); }));
    QCOMPARE(fixture.inputs->events(), (QStringList{deletion.load, QStringLiteral("<begin>"), deletion.dependents,
                                                    deletion.row, QStringLiteral("<commit>")}));
    QCOMPARE(fixture.list().rowCount(), 2);
}

/// `ran` are the statements up to the one that fails, which is the last of them.
template <typename Fixture>
void checkDeletionFailure(Fixture& fixture, const Deletion& deletion, const QStringList& ran)
{
    fixture.willListTwo();
    fixture.inputs->willAffect(QStringLiteral("delete"), 1);
    fixture.component.prompts.willAnswer(core::AnswerYes);
    bool burstWasOpen = true;
    QVERIFY(controls::whileOpen(fixture.form, [&] {
        fixture.inputs->failStatement(ran.size(), RuntimeError(-2147467259, QStringLiteral("Bloqueada.")));
        fixture.component.prompts.whileShown = [&] { burstWasOpen = fixture.inputs->burstIsOpen(); };
        controls::pressKey(Qt::Key_Delete);
        QCOMPARE(fixture.list().rowCount(), 2);
    }));
    QVERIFY(!burstWasOpen);
    QCOMPARE(fixture.inputs->events(),
             QStringList({deletion.load, QStringLiteral("<begin>")}) + ran + QStringList{QStringLiteral("<end>")});
    QCOMPARE(fixture.boxes().mid(1),
             QList{critical(QStringLiteral("-2147467259 - Bloqueada.\r\n\r\n") + deletion.location)});
}

template <typename Fixture>
void checkDeletionFailureAtCommit(Fixture& fixture)
{
    fixture.willListTwo();
    fixture.inputs->willAffect(QStringLiteral("delete"), 1);
    fixture.inputs->failCommit(RuntimeError(-2147467259, QStringLiteral("Disco lleno.")));
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(controls::whileOpen(fixture.form, [] { controls::pressKey(Qt::Key_Delete); }));
    QCOMPARE(fixture.inputs->commits(), 0);
    QCOMPARE(fixture.inputs->statements().size(), 3);
    QVERIFY(fixture.boxes().constLast().text.startsWith(QStringLiteral("-2147467259 - Disco lleno.")));
}

} // namespace oVELDRA::catalog
