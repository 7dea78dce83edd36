// What every screen of the program has: its page of the manual behind F1, and a name on each control that
// takes the focus.

#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "support/Preview.h"
#include "ui/ErrorReport.h"
#include "ui/MessageBoxes.h"
#include "ui/TextViewer.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

using Look = std::function<void(QWidget*)>;

/// One screen: its page of the manual, and how an operator comes to it. `open` shows the screen, lets `look`
/// see it, and leaves it.
struct Screen {
    const char* name;
    const char* page;
    std::function<void(const Look& look)> open;
};

QString read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The controls below `node` that take the focus and have no name, each told by its way from the top; and the
/// columns that are shown and have no name.
void collectUnnamed(QAccessibleInterface* node, const QString& way, QStringList& unnamed) {
    const QObject* object = node->object();
    const QString here =
        way + u'/' +
        (object ? QString::fromLatin1(object->metaObject()->className()) + u' ' + object->objectName()
                : u"role %1"_s.arg(node->role()));
    if (node->state().focusable && node->text(QAccessible::Name).trimmed().isEmpty())
        unnamed.append(here);
    if (const auto* grid = qobject_cast<const Grid*>(object)) {
        int column = 0;
        for (int child = 0; column < grid->columns(); ++child)
            if (QAccessibleInterface* cell = node->child(child);
                !cell || cell->role() == QAccessible::ColumnHeader) {
                if (!cell || (!grid->isColumnHidden(column) && cell->text(QAccessible::Name).isEmpty()))
                    unnamed.append(here + u" column %1"_s.arg(column));
                ++column;
            }
        return;
    }
    for (int child = 0; child < node->childCount(); ++child)
        if (QAccessibleInterface* below = node->child(child))
            collectUnnamed(below, here, unnamed);
}

} // namespace

class TstAllScreens : public QObject {
    Q_OBJECT

  public:
    /// Takes what F1 hands to the desktop.
    Q_INVOKABLE void browse(const QUrl& url) { m_browsed.append(url); }

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void f1OpensTheScreensPage_data() { addScreens(); }
    void f1OpensTheScreensPage();
    void everyControlHasAName_data() { addScreens(); }
    void everyControlHasAName();
    void missingManualIsTold();
    void pagesLeadToAnchorsOfTheManual();
    void manualNeedsNothingElse();

  private:
    void addScreens();
    void opened(const QString& action, const Look& look);
    void openedByKey(Qt::Key key, const Look& look);
    void closed(QWidget* screen) { QTest::keyClick(screen, Qt::Key_Escape); }
    void panel(const Look& look);
    void panelWhileEditing(int column, const Look& look);
    void documentView(const Look& look);
    void interruptedClosings(const Look& look);
    void promotion(const Look& look);
    void productSelection(const Look& look);
    void salesSummary(const Look& look);
    void commission(const Look& look);
    void sellerStatement(const Look& look);
    void targets(int tab, const Look& look);
    void preview(const Look& look);
    void log(const Look& look);
    void box(const std::function<void()>& cause, const Look& look);

    QString manualFolder() const { return b->programFolder() + u"/manual"_s; }

    std::unique_ptr<PanelBench> b;
    QList<Screen> m_screens;
    QList<QUrl> m_browsed;
};

void TstAllScreens::initTestCase() {
    b = std::make_unique<PanelBench>();
    QDesktopServices::setUrlHandler(u"file"_s, this, "browse");
    const auto action = [this](const QString& name) {
        return [this, name](const Look& look) { opened(name, look); };
    };
    m_screens = {
        {"panel", "painel", [this](const Look& look) { panel(look); }},
        {"panel, price table", "painel",
         [this](const Look& look) { panelWhileEditing(painelfechamento::Tabela, look); }},
        {"panel, payment method", "painel",
         [this](const Look& look) { panelWhileEditing(painelfechamento::FormaPagto, look); }},
        {"document view", "visualizacao", [this](const Look& look) { documentView(look); }},
        {"interrupted closings", "fechamentos-interrompidos",
         [this](const Look& look) { interruptedClosings(look); }},
        {"rehearsed batch", "conferencia", [this](const Look& look) { openedByKey(Qt::Key_F6, look); }},
        {"promotional prices", "promocao", [this](const Look& look) { promotion(look); }},
        {"product selection", "selecao-de-produtos", [this](const Look& look) { productSelection(look); }},
        {"sales summary", "resumo-de-vendas", [this](const Look& look) { salesSummary(look); }},
        {"commission", "comissao", [this](const Look& look) { commission(look); }},
        {"seller statement", "extrato-do-vendedor", [this](const Look& look) { sellerStatement(look); }},
        {"price level", "nivel-de-precos", action(u"MnrelAlfaNivel"_s)},
        {"targets", "metas", [this](const Look& look) { targets(0, look); }},
        {"progress of targets", "metas", [this](const Look& look) { targets(1, look); }},
        {"report preview", "relatorios", [this](const Look& look) { preview(look); }},
        {"log", "painel", [this](const Look& look) { log(look); }},
        {"message", "avisos",
         [this](const Look& look) { box([this] { boxes::inform(b->panel(), u"texto"_s); }, look); }},
        {"question", "avisos",
         [this](const Look& look) {
             box([this] { boxes::ask(b->panel(), u"texto"_s, QMessageBox::Question); }, look);
         }},
        {"long message", "avisos",
         [this](const Look& look) {
             box([this] { boxes::inform(b->panel(), u"PV\n"_s.repeated(200)); }, look);
         }},
        {"error report", "avisos",
         [this](const Look& look) {
             const RuntimeError error(1146, u"Table"_s, u"42S02"_s, u"SELECT 1"_s);
             box([&] { showErrorReport(b->panel(), error); }, look);
         }},
    };
}

void TstAllScreens::cleanupTestCase() {
    QDesktopServices::unsetUrlHandler(u"file"_s);
    b.reset();
}

void TstAllScreens::init() {
    b->reset();
    m_browsed.clear();
    const QDir made(QStringLiteral(TARVESSA_MANUAL));
    QDirIterator files(made.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString target = manualFolder() + u'/' + made.relativeFilePath(files.next());
        QVERIFY(QDir().mkpath(QFileInfo(target).path()));
        QVERIFY(QFile::copy(files.filePath(), target));
    }
    b->shop().empresa();
    b->shop().formas();
    b->shop().movimento(7);
    b->shop().documento({.pedido = 7, .linhas = {Linha{}, Linha{}}});
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->server().execute(u"UPDATE produtos SET descricao=CONCAT('PRODUTO ',codfabr);"
                        "UPDATE clientes SET colunapreco='1'"_s);
    QVERIFY(b->open(PanelBench::wide));
}

void TstAllScreens::addScreens() {
    QTest::addColumn<int>("screen");
    for (int index = 0; index < m_screens.size(); ++index)
        QTest::newRow(m_screens[index].name) << index;
}

void TstAllScreens::opened(const QString& action, const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        look(screen);
        closed(screen);
    });
    b->panel()->findChild<QAction*>(action)->trigger();
    QCOMPARE(modal.problem(), QString());
}

void TstAllScreens::openedByKey(Qt::Key key, const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        look(screen);
        closed(screen);
    });
    b->key(key);
    QCOMPARE(modal.problem(), QString());
}

void TstAllScreens::panel(const Look& look) {
    look(b->panel());
}

void TstAllScreens::panelWhileEditing(int column, const Look& look) {
    b->click(1, column);
    look(b->panel());
    b->key(Qt::Key_Escape);
}

void TstAllScreens::documentView(const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        look(screen);
        closed(screen);
    });
    b->clickTwice(1, painelfechamento::Pedido);
    QCOMPARE(modal.problem(), QString());
}

// A settled pre-sale with neither receivable nor cash row.
void TstAllScreens::interruptedClosings(const Look& look) {
    b->server().execute(u"UPDATE orcamento SET situacaoorc='B', databaixa='2024-03-15' WHERE nrpedido=7;"
                        "INSERT INTO logestoque SET data='2024-03-15', hora='10:00:00', usuario='', "
                        "tela='FECHAMENTO DA PV Nº 0000007', codproduto='P1', qtdLoja=-1"_s);
    openedByKey(Qt::Key_F7, look);
}

void TstAllScreens::promotion(const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        Hands(screen).fill(u"Descricao"_s, u"P1"_s);
        Hands(screen).key(Qt::Key_Tab);
        look(screen);
        closed(screen);
    });
    b->press(u"Command6"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstAllScreens::productSelection(const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        modal.onOpen([&](QWidget* selection) {
            look(selection);
            QTest::keyClick(selection, Qt::Key_Return);
        });
        Hands(screen).fill(u"Descricao"_s, u"PRODUTO"_s);
        Hands(screen).key(Qt::Key_Tab);
        closed(screen);
    });
    b->press(u"Command6"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstAllScreens::salesSummary(const Look& look) {
    opened(u"MnResumoVendas"_s, [&](QWidget* screen) {
        const Hands hands(screen);
        hands.fill(u"DataIni"_s, u"01022024"_s);
        hands.press(u"Command4"_s);
        auto* levels = hands.control<QTabWidget>(u"TabPreco"_s);
        for (int level = 0; level < levels->count(); ++level) {
            levels->setCurrentIndex(level);
            look(screen);
        }
    });
}

void TstAllScreens::commission(const Look& look) {
    opened(u"MnComissao"_s, [&](QWidget* screen) {
        const Hands hands(screen);
        hands.press(u"Command4"_s);
        const Grid* grid = hands.grid();
        int percentage = 0;
        while (percentage < grid->columns() && !grid->text(0, percentage).startsWith(u"% COM"_s))
            ++percentage;
        hands.click(1, percentage);
        QVERIFY(hands.control(u"TextGrid"_s)->isVisible());
        look(screen);
        hands.key(Qt::Key_Escape);
    });
}

void TstAllScreens::sellerStatement(const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        const Hands hands(screen);
        hands.press(u"Command4"_s);
        const Grid* grid = hands.grid();
        int printed = 0;
        while (printed < grid->columns() - 1 && !grid->hasPicture(1, printed))
            ++printed;
        modal.onOpen([&](QWidget* statement) {
            look(statement);
            closed(statement);
        });
        hands.click(1, printed);
        closed(screen);
    });
    b->panel()->findChild<QAction*>(u"MnComissao"_s)->trigger();
    QCOMPARE(modal.problem(), QString());
}

void TstAllScreens::targets(int tab, const Look& look) {
    opened(u"Metas"_s, [&](QWidget* screen) {
        const Hands hands(screen);
        hands.control<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(tab);
        look(screen);
    });
}

void TstAllScreens::preview(const Look& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        const Hands hands(screen);
        hands.press(u"Command4"_s);
        modal.onOpen([&](QWidget* window) {
            look(window);
            closed(window);
        });
        hands.press(u"Command1"_s);
        hands.settle();
        closed(screen);
    });
    b->panel()->findChild<QAction*>(u"MnComissao"_s)->trigger();
    QCOMPARE(modal.problem(), QString());
}

void TstAllScreens::log(const Look& look) {
    QFile file(b->logPath());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("LOG\r\n") > 0);
    file.close();
    TextViewer::open(b->logPath());
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"TextViewer") {
            QVERIFY(QTest::qWaitForWindowActive(window));
            look(window);
            closed(window);
        }
}

void TstAllScreens::box(const std::function<void()>& cause, const Look& look) {
    bool seen = false;
    QTimer timer;
    timer.callOnTimeout([&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || seen)
            return;
        seen = true;
        timer.stop();
        QVERIFY(QTest::qWaitFor([box] { return QApplication::activeWindow() == box; }));
        look(box);
        closed(box);
    });
    timer.start(10);
    cause();
    QVERIFY(seen);
}

void TstAllScreens::f1OpensTheScreensPage() {
    QFETCH(int, screen);
    int looks = 0;
    m_screens[screen].open([&](QWidget* window) {
        ++looks;
        QWidget* focus = window->focusWidget();
        QTest::keyClick(focus ? focus : window, Qt::Key_F1);
    });
    QVERIFY(looks > 0);
    QCOMPARE(m_browsed.size(), looks);
    const QString page = QString::fromLatin1(m_screens[screen].page);
    const QString path = manualFolder() + u"/tela/"_s + page + u".html"_s;
    for (const QUrl& url : std::as_const(m_browsed))
        QCOMPARE(url, QUrl::fromLocalFile(path));
    QVERIFY(read(path).contains(u"url=../manual.html#%1\""_s.arg(page)));
    QVERIFY(read(manualFolder() + u"/manual.html"_s).contains(u"<h2 id=\"%1\">"_s.arg(page)));
}

void TstAllScreens::everyControlHasAName() {
    QFETCH(int, screen);
    QStringList unnamed;
    int looks = 0;
    m_screens[screen].open([&](QWidget* window) {
        ++looks;
        QAccessibleInterface* top = QAccessible::queryAccessibleInterface(window);
        QVERIFY(top);
        collectUnnamed(top, {}, unnamed);
    });
    QVERIFY(looks > 0);
    QVERIFY2(unnamed.isEmpty(), qPrintable(u'\n' + unnamed.join(u'\n')));
}

void TstAllScreens::missingManualIsTold() {
    QVERIFY(QDir(manualFolder()).removeRecursively());
    ModalHelper modal;
    modal.expectContaining(u"O manual não foi encontrado"_s, QMessageBox::Ok);
    b->key(Qt::Key_F1);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(
        modal.boxes()[0].text.contains(QDir::toNativeSeparators(manualFolder() + u"/tela/painel.html"_s)));
    QCOMPARE(m_browsed, QList<QUrl>());
}

void TstAllScreens::pagesLeadToAnchorsOfTheManual() {
    const QString manual = read(manualFolder() + u"/manual.html"_s);
    const QStringList pages = QDir(manualFolder() + u"/tela"_s).entryList(QDir::Files);
    QVERIFY(pages.contains(u"painel.html"_s));
    for (const QString& page : pages)
        QVERIFY2(manual.contains(u"id=\"%1\""_s.arg(page.chopped(5))), qPrintable(page));
    static const QRegularExpression link(u"href=\"([^\"]*)\""_s);
    for (auto found = link.globalMatch(manual); found.hasNext();) {
        const QString target = found.next().captured(1);
        QVERIFY2(target.startsWith(u'#') && manual.contains(u"id=\"%1\""_s.arg(target.sliced(1))),
                 qPrintable(target));
    }
}

// It opens from the disk of a machine without a network, so it holds or has beside it all that it shows.
void TstAllScreens::manualNeedsNothingElse() {
    const QString manual = read(manualFolder() + u"/manual.html"_s);
    QVERIFY(!manual.contains(u"<script"_s, Qt::CaseInsensitive));
    QVERIFY(!manual.contains(u"<link"_s, Qt::CaseInsensitive));
    QVERIFY(!manual.contains(u"http:"_s) && !manual.contains(u"https:"_s));
    static const QRegularExpression picture(u"src=\"([^\"]*)\""_s);
    int pictures = 0;
    for (auto found = picture.globalMatch(manual); found.hasNext(); ++pictures) {
        const QString path = found.next().captured(1);
        QVERIFY2(QFile::exists(manualFolder() + u'/' + path), qPrintable(path));
    }
    QVERIFY(pictures > 10);
}

QTEST_MAIN(TstAllScreens)
#include "tst_all_screens.moc"
