#include "support/Bench.h"

#include "base/Clock.h"
#include "base/ProgramFolder.h"
#include "core/AcessoDados.h"
#include "core/PrintLayout.h"
#include "printing/output/PdfFile.h"
#include "printing/pages/Report.h"
#include "support/Program.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

QWidget* viewer() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"TextViewer" && window->isVisible())
            return window;
    return nullptr;
}

} // namespace

Bench::Bench() : m_log(m_server), m_shop(m_server) {
    reset();
}

Bench::~Bench() {
    closePreviews();
    close();
    closeViewers();
    CRW = nullptr;
    setProgramFolder({});
    clock::fix({});
}

void Bench::reset() {
    closePreviews();
    close();
    closeViewers();
    m_server.useCharset({});
    m_server.useSocket(m_server.socket());
    m_shop.esvazia();
    clock::fix(QDateTime(QDate(2024, 3, 15), QTime(14, 7, 9)));
    setProgramFolder(programFolder());
    prepareFolders();
    m_reportControl = std::make_unique<ReportControl>(nullptr);
    CRW = m_reportControl.get();
    mark();
}

void Bench::resetConnected() {
    reset();
    m_shop.empresa();
    connect();
}

void Bench::connect() {
    EncerraBanco();
    if (!IniciaBanco())
        qFatal("the private server cannot be reached");
    mark();
}

void Bench::take(std::unique_ptr<QWidget> screen) {
    m_screen = std::move(screen);
    setWindow(m_screen.get());
}

bool Bench::show(const QSize& minimumSize) {
    // The screen of a test may be narrower than any real one, and the form opens within it.
    if (minimumSize.isValid())
        m_screen->resize(m_screen->size().expandedTo(minimumSize));
    return showActive(m_screen.get());
}

void Bench::close() {
    setWindow(nullptr);
    m_screen.reset();
    EncerraBanco();
}

QStringList Bench::statements() {
    const QStringList texts = m_log.texts();
    m_log.mark();
    return texts;
}

int Bench::closePreviews() {
    int closed = 0;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (window->inherits("tarvessa::report::PreviewWindow") && window->isVisible()) {
            window->close();
            ++closed;
        }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return closed;
}

QString Bench::reportText() const {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"relatorio.pdf"_s);
    report::savePdf(*CRW->lastReport(), file);
    return pdfText(file);
}

QString Bench::viewerText() {
    const QWidget* window = viewer();
    return window ? window->findChild<QPlainTextEdit*>()->toPlainText() : QString();
}

void Bench::prepareFolders() {
    QDir(programFolder()).removeRecursively();
    const QDir layouts(QStringLiteral(TARVESSA_SOURCE_DIR "/rpt"));
    QDir().mkpath(programFolder() + u"/rpt"_s);
    for (const QString& name : layouts.entryList(QDir::Files))
        QFile::copy(layouts.filePath(name), programFolder() + u"/rpt/"_s + name);
}

void Bench::closeViewers() {
    while (QWidget* window = viewer()) {
        window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace tarvessa::test
