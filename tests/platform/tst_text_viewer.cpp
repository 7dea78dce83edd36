#include "platform/TextViewer.h"

#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// The window that shows a log where the desktop has no viewer.
class TstTextViewer : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void fileIsShownReadOnlyAndMaximised();
    void openingReturnsAtOnceAndBlocksNothing();
    void keysDoNotChangeTheText();
    void textCanBeSelectedAndCopied();
    void escapeClosesAndFreesIt();
    void fileThatCannotBeReadShowsWhy();
    void longFileIsShownWhole();

  private:
    QString grava(const QByteArray& bytes) const {
        QFile arquivo(m_pasta->filePath(u"LogFechamento.txt"_s));
        return arquivo.open(QIODevice::WriteOnly) && arquivo.write(bytes) == bytes.size() ? arquivo.fileName()
                                                                                          : QString();
    }
    static QMainWindow* janela() {
        const auto todas = QApplication::topLevelWidgets();
        for (QWidget* uma : todas)
            if (uma->objectName() == u"TextViewer" && uma->isVisible())
                return qobject_cast<QMainWindow*>(uma);
        return nullptr;
    }
    static QPlainTextEdit* texto() { return janela()->findChild<QPlainTextEdit*>(); }

    std::unique_ptr<QTemporaryDir> m_pasta;
};

void TstTextViewer::init() {
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
}

void TstTextViewer::cleanup() {
    while (QMainWindow* uma = janela())
        delete uma;
}

void TstTextViewer::fileIsShownReadOnlyAndMaximised() {
    TextViewer::open(grava("PV 0000012 - P\xC3\x83O\r\nSEM ESTOQUE \xF0\x9F\xA5\x90\r\n"));
    QVERIFY(janela());
    QVERIFY(janela()->isMaximized());
    QCOMPARE(janela()->windowTitle(), u"LogFechamento.txt"_s);
    QCOMPARE(texto()->toPlainText(), u"PV 0000012 - PÃO\nSEM ESTOQUE \U0001F950\n"_s);
    QVERIFY(texto()->isReadOnly());
    QCOMPARE(texto()->accessibleName(), u"LogFechamento.txt"_s);
}

void TstTextViewer::openingReturnsAtOnceAndBlocksNothing() {
    TextViewer::open(grava("a"));
    QVERIFY(!janela()->isModal());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

void TstTextViewer::keysDoNotChangeTheText() {
    TextViewer::open(grava("a\r\n"));
    QVERIFY(QTest::qWaitForWindowActive(janela()));
    QTest::keyClicks(texto(), u"xyz"_s);
    QTest::keyClick(texto(), Qt::Key_Delete);
    QCOMPARE(texto()->toPlainText(), u"a\n"_s);
}

void TstTextViewer::textCanBeSelectedAndCopied() {
    TextViewer::open(grava("PV 0000012"));
    QTest::keyClick(texto(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(texto()->textCursor().selectedText(), u"PV 0000012"_s);
}

void TstTextViewer::escapeClosesAndFreesIt() {
    TextViewer::open(grava("a"));
    QPointer<QMainWindow> aberta = janela();
    QVERIFY(QTest::qWaitForWindowActive(aberta));
    QTest::keyClick(texto(), Qt::Key_Escape);
    QTRY_VERIFY(!aberta);
}

void TstTextViewer::fileThatCannotBeReadShowsWhy() {
    const QString caminho = m_pasta->filePath(u"nenhum.txt"_s);
    TextViewer::open(caminho);
    QVERIFY(janela());
    QVERIFY2(texto()->toPlainText().startsWith(u"Não foi possível ler %1: "_s.arg(caminho)),
             qPrintable(texto()->toPlainText()));
}

void TstTextViewer::longFileIsShownWhole() {
    QByteArray bytes;
    for (int linha = 1; linha <= 20000; ++linha)
        bytes += "linha " + QByteArray::number(linha) + "\r\n";
    TextViewer::open(grava(bytes));
    QCOMPARE(texto()->document()->blockCount(), 20001);
    QCOMPARE(texto()->document()->findBlockByNumber(19999).text(), u"linha 20000"_s);
}

QTEST_MAIN(TstTextViewer)
#include "tst_text_viewer.moc"
