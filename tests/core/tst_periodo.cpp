#include "base/Clock.h"
#include "core/Periodo.h"
#include "support/ModalHelper.h"
#include "ui/DateBox.h"

#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using tarvessa::test::ModalHelper;

/// Defaults and checks of a report's period.
class TstPeriodo : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void currentMonth_data();
    void currentMonth();
    void previousMonth_data();
    void previousMonth();
    void acceptedPeriods_data();
    void acceptedPeriods();
    void refusedPeriods_data();
    void refusedPeriods();
    void datesInEitherOrder_data();
    void datesInEitherOrder();
    void datesThatAreNone_data();
    void datesThatAreNone();
    void periodIsNamedInAFileName();

  private:
    static QDateTime noDia(const QString& dia) { return {QDate::fromString(dia, Qt::ISODate), QTime(10, 0)}; }

    std::unique_ptr<QWidget> m_form;
    DateBox* m_dataIni = nullptr;
    DateBox* m_dataFin = nullptr;
    std::unique_ptr<Periodo> m_periodo;
};

void TstPeriodo::init() {
    m_form = std::make_unique<QWidget>();
    auto* page = new QVBoxLayout(m_form.get());
    page->addWidget(m_dataIni = new DateBox);
    page->addWidget(m_dataFin = new DateBox);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_periodo = std::make_unique<Periodo>(m_dataIni, m_dataFin,
                                          Periodo::Mensagens{u"ordem"_s, u"início"_s, u"fim"_s});
}

void TstPeriodo::cleanup() {
    m_periodo.reset();
    m_form.reset();
    clock::fix({});
}

void TstPeriodo::periodIsNamedInAFileName() {
    m_dataIni->setDate(QDate(2024, 2, 1));
    m_dataFin->setDate(QDate(2024, 2, 29));
    QCOMPARE(m_periodo->inFileName(), u"2024-02"_s);
    m_dataFin->setDate(QDate(2024, 2, 28));
    QCOMPARE(m_periodo->inFileName(), u"2024-02-01 a 2024-02-28"_s);
    m_dataFin->setDate(QDate(2024, 3, 31));
    QCOMPARE(m_periodo->inFileName(), u"2024-02-01 a 2024-03-31"_s);
    m_dataFin->setDate(QDate(2024, 2, 1));
    QCOMPARE(m_periodo->inFileName(), u"2024-02-01"_s);
}

void TstPeriodo::currentMonth_data() {
    QTest::addColumn<QString>("today");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::newRow("middle") << u"2024-03-15"_s << u"01/03/2024"_s << u"15/03/2024"_s;
    QTest::newRow("first day") << u"2024-03-01"_s << u"01/03/2024"_s << u"01/03/2024"_s;
    QTest::newRow("last day") << u"2024-02-29"_s << u"01/02/2024"_s << u"29/02/2024"_s;
}

void TstPeriodo::currentMonth() {
    QFETCH(QString, today);
    clock::fix(noDia(today));
    m_periodo->mesCorrente();
    QTEST(m_dataIni->text(), "start");
    QTEST(m_dataFin->text(), "end");
}

void TstPeriodo::previousMonth_data() {
    QTest::addColumn<QString>("today");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::newRow("1 March of a leap year") << u"2024-03-01"_s << u"01/02/2024"_s << u"29/02/2024"_s;
    QTest::newRow("1 March of another") << u"2023-03-01"_s << u"01/02/2023"_s << u"28/02/2023"_s;
    QTest::newRow("January") << u"2024-01-31"_s << u"01/12/2023"_s << u"31/12/2023"_s;
    QTest::newRow("31 May") << u"2024-05-31"_s << u"01/04/2024"_s << u"30/04/2024"_s;
}

void TstPeriodo::previousMonth() {
    QFETCH(QString, today);
    clock::fix(noDia(today));
    m_periodo->mesAnterior();
    QTEST(m_dataIni->text(), "start");
    QTEST(m_dataFin->text(), "end");
}

void TstPeriodo::acceptedPeriods_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("startSql");
    QTest::addColumn<QString>("endSql");
    QTest::newRow("one day") << u"05/03/2024"_s << u"05/03/2024"_s << u"2024-03-05"_s << u"2024-03-05"_s;
    QTest::newRow("over a year") << u"31/12/2023"_s << u"01/01/2024"_s << u"2023-12-31"_s << u"2024-01-01"_s;
}

void TstPeriodo::acceptedPeriods() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    m_dataIni->setText(start);
    m_dataFin->setText(end);
    ModalHelper modal;
    QVERIFY(m_periodo->confere());
    QCOMPARE(modal.problem(), QString());
    QTEST(m_periodo->inicioSQL(), "startSql");
    QTEST(m_periodo->fimSQL(), "endSql");
    QCOMPARE(m_periodo->inicioTela(), start);
    QCOMPARE(m_periodo->fimTela(), end);
    // Typed with single digits it reads the same.
    m_dataIni->setText(start.sliced(1));
    if (start.startsWith(u'0'))
        QCOMPARE(m_periodo->inicioTela(), start);
    // What is no date reads as it was typed.
    m_dataFin->setText(u"31/02/2024"_s);
    QCOMPARE(m_periodo->fimTela(), u"31/02/2024"_s);
}

void TstPeriodo::refusedPeriods_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("focusAtStart");
    const QString good = u"05/03/2024"_s;
    QTest::newRow("31 February") << u"31/02/2024"_s << good << u"início"_s << true;
    QTest::newRow("29 February of no leap year") << u"29/02/2023"_s << good << u"início"_s << true;
    QTest::newRow("zeros") << u"00/00/0000"_s << good << u"início"_s << true;
    QTest::newRow("empty start") << QString() << good << u"início"_s << true;
    QTest::newRow("half-typed start") << u"05/03/20"_s << good << u"início"_s << true;
    QTest::newRow("both invalid: the start first")
        << u"31/02/2024"_s << u"31/02/2024"_s << u"início"_s << true;
    QTest::newRow("end 31 April") << good << u"31/04/2024"_s << u"fim"_s << false;
    QTest::newRow("empty end") << good << QString() << u"fim"_s << false;
    QTest::newRow("half-typed end") << good << u"1"_s << u"fim"_s << false;
    QTest::newRow("inverted") << u"06/03/2024"_s << good << u"ordem"_s << true;
    QTest::newRow("inverted by a year") << u"01/01/2025"_s << u"31/12/2024"_s << u"ordem"_s << true;
}

void TstPeriodo::refusedPeriods() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QString, message);
    QFETCH(bool, focusAtStart);
    m_dataIni->setText(start);
    m_dataFin->setText(end);
    (focusAtStart ? m_dataFin : m_dataIni)->setFocus();
    ModalHelper modal;
    modal.expect(message, QMessageBox::Ok);
    QVERIFY(!m_periodo->confere());
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(modal.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    DateBox* box = focusAtStart ? m_dataIni : m_dataFin;
    QCOMPARE(m_form->focusWidget(), box);
    // The next date takes the place of the refused one, also after the window has become active again.
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    for (const char digit : {'1', '7', '0', '8', '2', '0', '2', '5'})
        QTest::keyClick(m_form->windowHandle(), digit);
    QCOMPARE(box->date(), QDate(2025, 8, 17));
}

void TstPeriodo::datesInEitherOrder_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::newRow("in order") << u"05/03/2024"_s << u"06/03/2024"_s;
    QTest::newRow("one day") << u"05/03/2024"_s << u"05/03/2024"_s;
    QTest::newRow("inverted") << u"06/03/2024"_s << u"05/03/2024"_s;
    QTest::newRow("inverted by a year") << u"01/01/2025"_s << u"31/12/2023"_s;
}

void TstPeriodo::datesInEitherOrder() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    m_dataIni->setText(start);
    m_dataFin->setText(end);
    m_dataFin->setFocus();
    ModalHelper modal;
    QVERIFY(m_periodo->confereDatas());
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(m_form->focusWidget(), m_dataFin);
}

void TstPeriodo::datesThatAreNone_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("focusAtStart");
    const QString good = u"05/03/2024"_s;
    QTest::newRow("31 February") << u"31/02/2024"_s << good << u"início"_s << true;
    QTest::newRow("zeros") << u"00/00/0000"_s << good << u"início"_s << true;
    QTest::newRow("empty start") << QString() << good << u"início"_s << true;
    QTest::newRow("both empty") << QString() << QString() << u"início"_s << true;
    QTest::newRow("end 31 April") << good << u"31/04/2024"_s << u"fim"_s << false;
    QTest::newRow("empty end") << good << QString() << u"fim"_s << false;
    QTest::newRow("half-typed end") << good << u"05/0"_s << u"fim"_s << false;
}

void TstPeriodo::datesThatAreNone() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QString, message);
    QFETCH(bool, focusAtStart);
    m_dataIni->setText(start);
    m_dataFin->setText(end);
    (focusAtStart ? m_dataFin : m_dataIni)->setFocus();
    ModalHelper modal;
    modal.expect(message, QMessageBox::Ok);
    QVERIFY(!m_periodo->confereDatas());
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(m_form->focusWidget(), focusAtStart ? m_dataIni : m_dataFin);
}

QTEST_MAIN(TstPeriodo)
#include "tst_periodo.moc"
