#include "ui/ShellHost.h"
#include "ui/TextViewer.h"

#include <QApplication>
#include <QDir>
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
    void desktopsViewerIsPreferred();
    void desktopWithoutAViewerGetsTheWindow_data();
    void desktopWithoutAViewerGetsTheWindow();
#ifdef _WIN32
    void notepadIsOpenedMaximised();
#endif

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
    static QPlainTextEdit* texto() {
        return janela()->findChild<QPlainTextEdit*>();
    }

    /// Puts a program of the desktop's into the test's folder, a shell script.
    bool instala(const QString& nome, const QByteArray& script) const {
        QFile arquivo(m_pasta->filePath(nome));
        return arquivo.open(QIODevice::WriteOnly) && arquivo.write("#!/bin/sh\n" + script + "\n") > 0 &&
               arquivo.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QByteArray conteudo(const QString& nome) const {
        QFile arquivo(m_pasta->filePath(nome));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_pasta;
    QByteArray m_path;
};

void TstTextViewer::init() {
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
    m_path = qgetenv("PATH");
}

void TstTextViewer::cleanup() {
    qputenv("PATH", m_path);
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

void TstTextViewer::desktopsViewerIsPreferred() {
    const QString log = grava("a");
    QVERIFY(instala(u"xdg-mime"_s, "echo leitor.desktop"));
    QVERIFY(instala(u"xdg-open"_s, "printf '%s' \"$1\" > '" + m_pasta->filePath(u"aberto"_s).toUtf8() + "'"));
    qputenv("PATH", m_pasta->path().toUtf8());
    ShellHost().openText(log);
    QTRY_COMPARE(conteudo(u"aberto"_s), log.toUtf8());
    QVERIFY(!janela());
}

void TstTextViewer::desktopWithoutAViewerGetsTheWindow_data() {
    QTest::addColumn<bool>("comAbridor");
    QTest::newRow("nothing to open files with") << false;
    QTest::newRow("no viewer for texts") << true;
}

void TstTextViewer::desktopWithoutAViewerGetsTheWindow() {
    QFETCH(bool, comAbridor);
    const QString log = grava("PV 0000012");
    if (comAbridor) {
        QVERIFY(instala(u"xdg-mime"_s, "exit 0"));
        QVERIFY(instala(u"xdg-open"_s, "exit 0"));
    }
    qputenv("PATH", m_pasta->path().toUtf8());
    ShellHost().openText(log);
    QVERIFY(janela());
    QCOMPARE(texto()->toPlainText(), u"PV 0000012"_s);
}

#ifdef _WIN32

// A program called Notepad lies beside the tests and writes down how it was started.
void TstTextViewer::notepadIsOpenedMaximised() {
    QVERIFY(QDir(m_pasta->path()).mkdir(u"São João"_s));
    const QString log = m_pasta->filePath(u"São João/LogFechamento.txt"_s);
    ShellHost().openText(log);
    QTRY_COMPARE(QString::fromUtf8(conteudo(u"São João/LogFechamento.txt.aberto"_s)),
                 u"3 "_s + QDir::toNativeSeparators(log)); // SW_SHOWMAXIMIZED
    QVERIFY(!janela());
}

#endif

QTEST_MAIN(TstTextViewer)
#include "tst_text_viewer.moc"
