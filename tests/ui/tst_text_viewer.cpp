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
    QString save(const QByteArray& bytes) const {
        QFile file(m_folder->filePath(u"LogFechamento.txt"_s));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName()
                                                                                    : QString();
    }
    static QMainWindow* window() {
        const auto all = QApplication::topLevelWidgets();
        for (QWidget* one : all)
            if (one->objectName() == u"TextViewer" && one->isVisible())
                return qobject_cast<QMainWindow*>(one);
        return nullptr;
    }
    static QPlainTextEdit* text() {
        return window()->findChild<QPlainTextEdit*>();
    }

    /// Puts a program of the desktop's into the test's folder, a shell script.
    bool install(const QString& name, const QByteArray& script) const {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write("#!/bin/sh\n" + script + "\n") > 0 &&
               file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QByteArray conteudo(const QString& name) const {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_path;
};

void TstTextViewer::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_path = qgetenv("PATH");
}

void TstTextViewer::cleanup() {
    qputenv("PATH", m_path);
    while (QMainWindow* one = window())
        delete one;
}

void TstTextViewer::fileIsShownReadOnlyAndMaximised() {
    TextViewer::open(save("PV 0000012 - P\xC3\x83O\r\nSEM ESTOQUE \xF0\x9F\xA5\x90\r\n"));
    QVERIFY(window());
    QVERIFY(window()->isMaximized());
    QCOMPARE(window()->windowTitle(), u"LogFechamento.txt"_s);
    QCOMPARE(text()->toPlainText(), u"PV 0000012 - PÃO\nSEM ESTOQUE \U0001F950\n"_s);
    QVERIFY(text()->isReadOnly());
    QCOMPARE(text()->accessibleName(), u"LogFechamento.txt"_s);
}

void TstTextViewer::openingReturnsAtOnceAndBlocksNothing() {
    TextViewer::open(save("a"));
    QVERIFY(!window()->isModal());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

void TstTextViewer::keysDoNotChangeTheText() {
    TextViewer::open(save("a\r\n"));
    QVERIFY(QTest::qWaitForWindowActive(window()));
    QTest::keyClicks(text(), u"xyz"_s);
    QTest::keyClick(text(), Qt::Key_Delete);
    QCOMPARE(text()->toPlainText(), u"a\n"_s);
}

void TstTextViewer::textCanBeSelectedAndCopied() {
    TextViewer::open(save("PV 0000012"));
    QTest::keyClick(text(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(text()->textCursor().selectedText(), u"PV 0000012"_s);
}

void TstTextViewer::escapeClosesAndFreesIt() {
    TextViewer::open(save("a"));
    QPointer<QMainWindow> open = window();
    QVERIFY(QTest::qWaitForWindowActive(open));
    QTest::keyClick(text(), Qt::Key_Escape);
    QTRY_VERIFY(!open);
}

void TstTextViewer::fileThatCannotBeReadShowsWhy() {
    const QString path = m_folder->filePath(u"nenhum.txt"_s);
    TextViewer::open(path);
    QVERIFY(window());
    QVERIFY2(text()->toPlainText().startsWith(u"Não foi possível ler %1: "_s.arg(path)),
             qPrintable(text()->toPlainText()));
}

void TstTextViewer::longFileIsShownWhole() {
    QByteArray bytes;
    for (int line = 1; line <= 20000; ++line)
        bytes += "linha " + QByteArray::number(line) + "\r\n";
    TextViewer::open(save(bytes));
    QCOMPARE(text()->document()->blockCount(), 20001);
    QCOMPARE(text()->document()->findBlockByNumber(19999).text(), u"linha 20000"_s);
}

void TstTextViewer::desktopsViewerIsPreferred() {
    const QString log = save("a");
    QVERIFY(install(u"xdg-mime"_s, "echo leitor.desktop"));
    QVERIFY(
        install(u"xdg-open"_s, "printf '%s' \"$1\" > '" + m_folder->filePath(u"aberto"_s).toUtf8() + "'"));
    qputenv("PATH", m_folder->path().toUtf8());
    ShellHost().openText(log);
    QTRY_COMPARE(conteudo(u"aberto"_s), log.toUtf8());
    QVERIFY(!window());
}

void TstTextViewer::desktopWithoutAViewerGetsTheWindow_data() {
    QTest::addColumn<bool>("withViewer");
    QTest::newRow("nothing to open files with") << false;
    QTest::newRow("no viewer for texts") << true;
}

void TstTextViewer::desktopWithoutAViewerGetsTheWindow() {
    QFETCH(bool, withViewer);
    const QString log = save("PV 0000012");
    if (withViewer) {
        QVERIFY(install(u"xdg-mime"_s, "exit 0"));
        QVERIFY(install(u"xdg-open"_s, "exit 0"));
    }
    qputenv("PATH", m_folder->path().toUtf8());
    ShellHost().openText(log);
    QVERIFY(window());
    QCOMPARE(text()->toPlainText(), u"PV 0000012"_s);
}

#ifdef _WIN32

// A program called Notepad lies beside the tests and writes down how it was started.
void TstTextViewer::notepadIsOpenedMaximised() {
    QVERIFY(QDir(m_folder->path()).mkdir(u"São João"_s));
    const QString log = m_folder->filePath(u"São João/LogFechamento.txt"_s);
    ShellHost().openText(log);
    QTRY_COMPARE(QString::fromUtf8(conteudo(u"São João/LogFechamento.txt.aberto"_s)),
                 u"3 "_s + QDir::toNativeSeparators(log)); // SW_SHOWMAXIMIZED
    QVERIFY(!window());
}

#endif

QTEST_MAIN(TstTextViewer)
#include "tst_text_viewer.moc"
