// Details of the panel that its statements and texts alone do not show.

#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "core/AcessoDados.h"
#include "support/EventSpy.h"
#include "support/ModalHelper.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QTest>
#include <QWindow>

#ifdef Q_OS_UNIX
#include <dlfcn.h>
#include <sql.h>
#include <sqlext.h>
#endif

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// Told of every statement as the program hands it to the driver manager, blanks at its ends included.
std::function<void(const QString&)> onStatement;

bool isPointerBusy() {
    return QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
}

} // namespace

#ifdef Q_OS_UNIX
// Stands in front of the driver manager's own function of that name.
extern "C" SQLRETURN SQL_API SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    if (onStatement)
        onStatement(QString::fromUtf8(reinterpret_cast<const char*>(text), length == SQL_NTS ? -1 : length));
    static const auto next = reinterpret_cast<decltype(&SQLExecDirect)>(dlsym(RTLD_NEXT, "SQLExecDirect"));
    return next(statement, text, length);
}
#endif

class TstPanelDetails : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { b.reset(); }
    void init();
    void cleanup() { onStatement = nullptr; }

    void blanksAroundStatements();
    void pointerInsideFechaPv();
    void pointerInsideTheListings();
    void windowIsPaintedBeforeTheFirstListing();
    void answeredBoxIsPaintedOverBeforeTheBatch();
    void listingsStoreTemRegistro_data();
    void listingsStoreTemRegistro();
    void resultIsClosedAfterEachWalk();
    void logIsClosedBeforeTheLastMessageAndOpensAfterIt();
    void listingKeepsTheCaptionOfTheToggle();
    void tickIsThePictureOfPicSucesso();
    void totalCannotBeTyped();
    void noteIsToldByTheUntrimmedCode();
    void noMethodIsToldByItsExactName_data();
    void noMethodIsToldByItsExactName();

  private:
    void closeAll(const QString& end);

    std::unique_ptr<PanelBench> b;
};

void TstPanelDetails::initTestCase() {
#ifndef Q_OS_UNIX
    QSKIP("needs a function in front of the driver manager's");
#endif
    b = std::make_unique<PanelBench>();
}

void TstPanelDetails::init() {
    b->reset();
    b->shop().basico();
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s});
}

void TstPanelDetails::closeAll(const QString& end) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(end, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstPanelDetails::blanksAroundStatements() {
    QStringList sent;
    onStatement = [&sent](const QString& sql) { sent.append(sql); };
    QVERIFY(b->open());
    QVERIFY(sent.contains(u"SELECT * FROM Finalizadoras order by ID "_s));
    closeAll(mensagens::sucesso);
    QVERIFY(sent.contains(u" UPDATE orcamento SET SituacaoOrc='B', DataBaixa= '2024-03-15', Horario='14:07', "
                          "status='B' WHERE NrPedido=1 AND tipoOperacao = 'P'"_s));
    for (const QString& sql : std::as_const(sent)) {
        const bool leading = sql.startsWith(u" UPDATE orcamento"_s);
        const bool trailing = sql.startsWith(u"SELECT * FROM Finalizadoras"_s);
        QCOMPARE(sql, (leading ? u" "_s : QString()) + sql.trimmed() + (trailing ? u" "_s : QString()));
    }
}

void TstPanelDetails::pointerInsideFechaPv() {
    QVERIFY(b->open());
    int sent = 0;
    int busy = 0;
    onStatement = [&](const QString&) {
        ++sent;
        busy += isPointerBusy() ? 1 : 0;
    };
    b->panel()->FechaPV(1, u"BOLETO"_s, Dinheiro(10), QDate(2024, 4, 14), u"PADARIA"_s);
    QVERIFY(sent > 5);
    QCOMPARE(busy, sent);
    QVERIFY(!isPointerBusy());
}

void TstPanelDetails::pointerInsideTheListings() {
    QStringList calm;
    int listings = 0;
    onStatement = [&](const QString& sql) {
        if (!sql.startsWith(u"SELECT o.codigocli"_s))
            return;
        ++listings;
        if (!isPointerBusy())
            calm.append(sql);
    };
    QVERIFY(b->open());
    QCOMPARE(listings, 2);
    QCOMPARE(calm, QStringList());
    QVERIFY(!isPointerBusy());
}

void TstPanelDetails::windowIsPaintedBeforeTheFirstListing() {
    bool painted = false;
    const EventSpy watch([&painted](QObject* object, QEvent* event) {
        if (event->type() == QEvent::Paint && object->objectName() == u"Command3")
            painted = true;
    });
    std::optional<bool> paintedAtTheListing;
    onStatement = [&](const QString& sql) {
        if (sql.startsWith(u"SELECT o.codigocli"_s) && !paintedAtTheListing)
            paintedAtTheListing = painted;
    };
    QVERIFY(b->open());
    QCOMPARE(paintedAtTheListing, std::optional(true));
}

// A box leaves its place blank until the window below is painted, and a batch lets nothing be painted.
void TstPanelDetails::answeredBoxIsPaintedOverBeforeTheBatch() {
    QVERIFY(b->open());
    bool painted = false;
    const EventSpy watch([&](QObject* object, QEvent* event) {
        // What is painted while the box is still there does not count.
        if (isBoxShown(object, event))
            connect(object, &QObject::destroyed, b->panel(), [&painted] { painted = false; });
        if (event->type() == QEvent::Paint && object == b->panel())
            painted = true;
    });
    std::optional<bool> paintedAtTheBatch;
    onStatement = [&](const QString&) {
        if (!paintedAtTheBatch)
            paintedAtTheBatch = painted;
    };
    closeAll(mensagens::sucesso);
    QCOMPARE(paintedAtTheBatch, std::optional(true));
}

void TstPanelDetails::listingsStoreTemRegistro_data() {
    QTest::addColumn<bool>("documents");
    QTest::newRow("some") << true;
    QTest::newRow("none") << false;
}

void TstPanelDetails::listingsStoreTemRegistro() {
    QFETCH(bool, documents);
    if (documents)
        b->server().execute(u"UPDATE orcamento SET TipoOperacao = 'D'"_s);
    else
        b->server().execute(u"DELETE FROM orcamento"_s);
    // The methods are asked for right after the DAVs.
    std::optional<bool> afterTheDavs;
    onStatement = [&](const QString& sql) {
        if (sql.startsWith(u"SELECT * FROM Finalizadoras"_s))
            afterTheDavs = TemRegistro;
    };
    TemRegistro = !documents;
    QVERIFY(b->open());
    QCOMPARE(afterTheDavs, std::optional(documents));

    if (documents) {
        b->press(u"Command2"_s);
    }
    TemRegistro = !documents;
    b->press(u"Command3"_s);
    QCOMPARE(TemRegistro, documents);
}

void TstPanelDetails::resultIsClosedAfterEachWalk() {
    b->shop().cliente({.codigo = u"CPF"_s, .cnpjCpf = u"12345678909"_s});
    b->shop().documento({.pedido = 3, .cliente = u"CPF"_s, .nomeVendedor = u"C"_s});
    b->shop().documento({.pedido = 4, .nomeVendedor = u"D"_s, .linhas = {{.total = u"1.00"_s}}});
    QVERIFY(b->open());
    QVERIFY(!rs.isOpen());
    QStringList whileOpen;
    onStatement = [&whileOpen](const QString& sql) {
        const bool walked = sql.startsWith(u"INSERT INTO logestoque"_s) ||
                            sql.startsWith(u"update Produtos"_s) || sql.contains(u"FichaTecnica"_s);
        if (rs.isOpen() && !walked && !sql.startsWith(u"select"_s, Qt::CaseInsensitive))
            whileOpen.append(sql);
    };
    closeAll(mensagens::comErros);
    QCOMPARE(whileOpen, QStringList());
    QVERIFY(!rs.isOpen());

    // Refused because of its lines or its stock, a pre-sale leaves no open result either.
    b->shop().documento({.pedido = 5});
    b->press(u"Command3"_s);
    QVERIFY(!rs.isOpen());
    for (const QString& change : {u"UPDATE orcamento SET totalped = 11 WHERE nrpedido = 5"_s,
                                  u"UPDATE produtos SET quantidade = -9, quantidade2 = 0"_s}) {
        b->server().execute(change);
        bool openInTheLastMessage = true;
        int boxes = 0;
        const EventSpy watch([&](QObject* object, QEvent* event) {
            if (isBoxShown(object, event) && ++boxes == 2)
                openInTheLastMessage = rs.isOpen();
        });
        closeAll(mensagens::comErros);
        QVERIFY(!openInTheLastMessage);
    }

    b->server().execute(u"UPDATE orcamento SET unitario = 1; UPDATE produtos SET Venda = 2"_s);
    bool openInTheReport = true;
    const EventSpy report([&](QObject* object, QEvent* event) {
        if (isBoxShown(object, event))
            openInTheReport = rs.isOpen();
    });
    ModalHelper modal;
    modal.expect(u"Deseja realmente o processo desta função?"_s, QMessageBox::Yes);
    modal.expectContaining(u"PV Nº 5"_s, QMessageBox::Ok);
    b->press(u"Command5"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!openInTheReport);
    QVERIFY(!rs.isOpen());

    QCOMPARE(b->panel()->Orcamento_NumeroPedido(u"P"_s), 1);
    QVERIFY(!rs.isOpen());
}

void TstPanelDetails::logIsClosedBeforeTheLastMessageAndOpensAfterIt() {
    b->server().execute(u"UPDATE clientes SET formapg = 'FIADO'"_s);
    QVERIFY(b->open());
    const auto isLogOpen = [this] {
        const QDir descriptors(u"/proc/self/fd"_s);
        for (const QFileInfo& descriptor :
             descriptors.entryInfoList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System))
            if (descriptor.symLinkTarget() == b->logPath())
                return true;
        return false;
    };
    QList<bool> logOpen;
    QList<bool> viewerOpen;
    const EventSpy watch([&](QObject* object, QEvent* event) {
        if (!isBoxShown(object, event))
            return;
        logOpen.append(isLogOpen());
        viewerOpen.append(!PanelBench::viewerText().isNull());
    });
    closeAll(mensagens::comErros);
    QCOMPARE(logOpen, (QList<bool>{QDir(u"/proc/self/fd"_s).exists(), false}));
    QCOMPARE(viewerOpen, (QList<bool>{false, false}));
    QVERIFY(!PanelBench::viewerText().isNull());
}

void TstPanelDetails::listingKeepsTheCaptionOfTheToggle() {
    QVERIFY(b->open());
    b->press(u"Command1"_s);
    b->click(1, painelfechamento::Selecao);
    closeAll(mensagens::sucesso);
    QCOMPARE(b->column(painelfechamento::Selecao), QStringList{u" "_s});
    QCOMPARE(b->button(u"Command1"_s)->text(), u"Seleciona todos os registros"_s);
}

void TstPanelDetails::tickIsThePictureOfPicSucesso() {
    QVERIFY(b->open());
    const auto picture = [this](const char* name) {
        return b->control<QLabel>(QString::fromLatin1(name))->pixmap(Qt::ReturnByValue);
    };
    const QPixmap check = picture("picSucesso");
    QVERIFY(!check.isNull());
    const auto tick =
        b->grid()->model()->index(0, painelfechamento::Selecao).data(Qt::DecorationRole).value<QIcon>();
    QCOMPARE(tick.pixmap(check.size()).toImage(), check.toImage());
    QVERIFY(!picture("picErro").isNull());
    QVERIFY(picture("picErro").toImage() != check.toImage());
}

void TstPanelDetails::totalCannotBeTyped() {
    QVERIFY(b->open());
    QLineEdit* total = b->box(u"Text1"_s);
    QVERIFY(total->isReadOnly());
    total->setFocus();
    total->selectAll();
    QTest::keyClicks(total, u"0"_s);
    QTest::keyClick(total, Qt::Key_Delete);
    QCOMPARE(total->text(), u"20,00"_s);
}

void TstPanelDetails::noteIsToldByTheUntrimmedCode() {
    b->shop().produto({.codigo = u"***X"_s});
    b->shop().documento({.pedido = 3,
                         .nomeVendedor = u"C"_s,
                         .linhas = {{.codigo = u" ***X"_s, .quantidade = u"2"_s}, {.codigo = u"***X"_s}}});
    QVERIFY(b->open());
    b->panel()->FechaPV(3, u"BOLETO"_s, Dinheiro(20), QDate(2024, 4, 14), u"PADARIA"_s);
    QCOMPARE(b->server().query(u"SELECT codproduto, qtdLoja FROM logestoque"_s),
             (QList<QStringList>{{u"***X"_s, u"-2.000"_s}}));
    QCOMPARE(b->valor(u"SELECT quantidade FROM produtos WHERE codfabr = '***X'"_s), u"98.000"_s);
}

void TstPanelDetails::noMethodIsToldByItsExactName_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("shown");
    QTest::newRow("exact") << u"(Nenhuma)"_s << u"DINHEIRO"_s;
    QTest::newRow("upper case") << u"(NENHUMA)"_s << u"(NENHUMA)"_s;
    QTest::newRow("lower case") << u"(nenhuma)"_s << u"(nenhuma)"_s;
}

void TstPanelDetails::noMethodIsToldByItsExactName() {
    QFETCH(QString, method);
    QFETCH(QString, shown);
    b->server().execute(u"UPDATE clientes SET formapg = '%1'"_s.arg(method));
    QVERIFY(b->open());
    QCOMPARE(b->column(painelfechamento::FormaPagto), (QStringList{shown, shown}));
}

QTEST_MAIN(TstPanelDetails)
#include "tst_panel_details.moc"
