#include "printing/ReportControl.h"

#include "base/Clock.h"
#include "printing/layout/LayoutReader.h"
#include "printing/pages/Report.h"
#include "printing/preview/PreviewWindow.h"
#include "ui/BusyPointer.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int minimised = 1;
constexpr int maximised = 2;

} // namespace

ReportControl::ReportControl(QWidget* owner, QString connectionString)
    : m_owner(owner), m_connectionString(std::move(connectionString)),
      m_choices(std::make_shared<report::PreviewChoices>()) {
}

ReportControl::~ReportControl() = default;

void ReportControl::setFormula(int slot, const QString& text) {
    if (text.isEmpty())
        m_formulas.remove(slot);
    else
        m_formulas.insert(slot, text);
}

QString ReportControl::formula(int slot) const {
    return m_formulas.value(slot);
}

void ReportControl::setSQLQuery(const QString& query) {
    m_query = query;
    m_queryLayout.reset();
}

void ReportControl::setAction(int action) {
    if (action != 1)
        return;
    const QString layoutPath = QString(m_fileName).replace(u'\\', u'/');
    // Taken before anything can fail, so that a failed report leaves neither query nor name to the next one.
    const QString documentName = std::exchange(m_documentName, {});
    if (!m_queryLayout)
        m_queryLayout = layoutPath;
    std::shared_ptr<report::Report> report;
    {
        const BusyPointer busy;
        report::Layout layout = report::readLayout(layoutPath);
        report::FormulaValues formulas;
        for (const QString& text : std::as_const(m_formulas))
            report::addFormula(text, formulas);
        const bool isReplaced = !m_query.isEmpty() && m_queryLayout == layoutPath;
        const QString query = isReplaced ? m_query : layout.query;
        report = std::make_shared<report::Report>(std::move(layout), m_connectionString, query, formulas,
                                                  clock::now());
        report->readPage();
    }
    showPreview(report, documentName);
    m_report = std::move(report);
}

void ReportControl::showPreview(const std::shared_ptr<report::Report>& report, const QString& documentName) {
    // Beside a modal screen a window takes input only as that screen's child.
    QWidget* behind = QApplication::activeModalWidget();
    if (!behind)
        behind = QApplication::activeWindow();
    // Not an earlier preview: closing that one would close this one too.
    while (qobject_cast<report::PreviewWindow*>(behind))
        behind = behind->parentWidget();
    if (!behind)
        behind = m_owner;
    auto preview = std::make_unique<report::PreviewWindow>(report, behind, m_choices, documentName);
    if (m_windowState == maximised)
        preview->showMaximized();
    else if (m_windowState == minimised)
        preview->showMinimized();
    else
        preview->show();
    preview->activateWindow();
    static_cast<void>(preview.release()); // deletes itself when closed
}

} // namespace tarvessa
