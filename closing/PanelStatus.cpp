#include "closing/PanelStatus.h"

#include "ui/PlainText.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QString counted(int number, const QString& one, const QString& many) {
    const QLocale brazilian(QLocale::Portuguese, QLocale::Brazil);
    return brazilian.toString(number) + u' ' + (number == 1 ? one : many);
}

} // namespace

PanelStatus::PanelStatus(QWidget* parent) : QLabel(parent), m_connection(u"sem conexão"_s) {
    setObjectName(u"Situacao"_s);
    setTextFormat(Qt::PlainText);
    // In line with what stands above the bar.
    setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin), 0,
                       style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing), 0);
    compose();
}

void PanelStatus::showList(int documents, int selected, int row) {
    m_documents = documents;
    m_selected = selected;
    m_row = row;
    compose();
}

void PanelStatus::showRow(int row) {
    m_row = row;
    compose();
}

void PanelStatus::showMarked(const QString& summary) {
    m_marked = summary;
    compose();
}

void PanelStatus::showConnected(const QString& server, const QString& database) {
    QStringList names{server, database};
    names.removeAll(QString());
    m_connection = names.isEmpty() ? u"conectado"_s : names.join(u'/');
    compose();
}

void PanelStatus::showDisconnected() {
    m_connection = u"sem conexão"_s;
    compose();
}

void PanelStatus::compose() {
    QString list = counted(m_documents, u"documento"_s, u"documentos"_s) + u", "_s +
                   counted(m_selected, u"selecionado"_s, u"selecionados"_s);
    if (m_row > 0)
        list += u", linha "_s + QLocale(QLocale::Portuguese, QLocale::Brazil).toString(m_row);
    if (!m_marked.isEmpty())
        list += u" · "_s + m_marked;
    setText(list + u" · "_s + m_connection + u" · versão "_s + QCoreApplication::applicationVersion());
    plain::setToolTip(this, text());
}

// The window may become narrower than the text is long.
QSize PanelStatus::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void PanelStatus::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
}

} // namespace tarvessa
