#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>

#include <memory>
#include <optional>

class QWidget;

namespace tarvessa {

namespace report {
class Report;
struct PreviewChoices;
} // namespace report

/// The report control: takes a layout file, values for the layout's formulas and optionally another query,
/// then runs the report and shows it in a preview window. One instance serves all screens; what a screen sets
/// stays set for the next one.
class ReportControl {
  public:
    /// `owner` is the main window, the parent of a preview when no other window is active. A preview is
    /// closed with the screen that has shown it. Reports read the database on a connection of their own, made
    /// with `connectionString` for each run.
    explicit ReportControl(QWidget* owner, QString connectionString = QStringLiteral("dsn=QDX"));
    ~ReportControl();
    ReportControl(const ReportControl&) = delete;
    ReportControl& operator=(const ReportControl&) = delete;

    /// Fills slot 0, 1, ... with "name='text'" or "name=number" (number in point form, blanks around it
    /// allowed); an empty text clears the slot. Names that the layout does not know are ignored when it runs.
    void setFormula(int slot, const QString& text);

    /// What the slot holds; empty when it is clear.
    QString formula(int slot) const;

    /// A whole SELECT in place of the layout's own query; empty for the layout's own. It belongs to the
    /// layout file of the next setAction(1), whether that succeeds or not: another layout runs its own query
    /// although this one stays set.
    void setSQLQuery(const QString& query);
    QString sqlQuery() const { return m_query; }

    /// How the preview window comes up: 0 normal, 1 minimised, 2 maximised.
    void setWindowState(int state) { m_windowState = state; }
    int windowState() const { return m_windowState; }

    /// Full path of the layout file, with slashes of either kind and letter case as on the disk.
    void setReportFileName(const QString& path) { m_fileName = path; }
    QString reportFileName() const { return m_fileName; }

    /// The name, without suffix, proposed for the files that the next report is saved to; the report's title
    /// without one. It is used up by setAction(1).
    void setDocumentName(const QString& name) { m_documentName = name; }

    /// 1 runs the report and shows the preview; returns when the first page can be shown. Other values do
    /// nothing. Raises RuntimeError: layout file missing or not valid (file, line and problem in the text), a
    /// malformed formula, a query that does more than read, a column that the query lacks, any error of the
    /// database.
    void setAction(int action);

    /// The report of the last setAction(1) that succeeded; null before.
    std::shared_ptr<report::Report> lastReport() const { return m_report; }

  private:
    void showPreview(const std::shared_ptr<report::Report>& report, const QString& documentName);

    QWidget* m_owner;
    QString m_connectionString;
    QMap<int, QString> m_formulas;
    QString m_query;
    std::optional<QString> m_queryLayout; // the layout file that m_query belongs to
    int m_windowState = 0;
    QString m_fileName;
    std::shared_ptr<report::PreviewChoices> m_choices;
    QString m_documentName;
    std::shared_ptr<report::Report> m_report;
};

} // namespace tarvessa
