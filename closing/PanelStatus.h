#pragma once

#include <QLabel>

namespace tarvessa {

/// The line of the panel's status bar about its list and its connection:
/// "2.022 documentos, 2.018 selecionados, linha 17 · servidor/banco · versão 1.5.3"; what marked rows come to
/// stands behind the row. A text too long for the bar is cut at its end, and the tool tip shows all of it.
class PanelStatus : public QLabel {
    Q_OBJECT

  public:
    explicit PanelStatus(QWidget* parent);

    /// How many documents are listed and how many of them are selected; the current row, 0 for none.
    void showList(int documents, int selected, int row);

    /// The current row alone.
    void showRow(int row);

    /// What the marked rows come to; empty when none are marked.
    void showMarked(const QString& summary);

    /// Where the connection leads; either name may be empty.
    void showConnected(const QString& server, const QString& database);
    void showDisconnected();

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void compose();

    int m_documents = 0;
    int m_selected = 0;
    int m_row = 0;
    QString m_marked;
    QString m_connection;
};

} // namespace tarvessa
