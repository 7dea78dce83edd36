#include "bench/ListingPanel.h"

#include "bench/support/Painted.h"
#include "bench/support/Recorded.h"
#include "core/AcessoDados.h"
#include "ui/grid/Grid.h"

#include <QPushButton>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

ListingPanel::ListingPanel() {
    if (!m_panel.Form_Load())
        throw std::runtime_error("the panel did not start");
    m_panel.resize(1100, 650);
    m_panel.show();
    m_grid = m_panel.findChild<Grid*>(u"Grid1"_s);
    m_button = m_panel.findChild<QPushButton*>(u"Command3"_s);
    waitPainted(m_grid->viewport());
}

ListingPanel::~ListingPanel() {
    EncerraBanco();
}

void ListingPanel::list() {
    m_button->click();
    waitPainted(m_grid->viewport());
}

void ListingPanel::expectRows(int documents) const {
    if (m_grid->rows() != documents + 1)
        throw std::runtime_error("the panel did not list what there is");
}

void ListingPanel::empty() {
    m_grid->setRows(1);
    m_button->setEnabled(true);
    waitPainted(m_grid->viewport());
}

QString ListingPanel::statement(test::PrivateServer& server) {
    empty();
    const QStringList texts = recordedTexts(server, [this] { list(); });
    if (texts.size() != 1)
        throw std::runtime_error("the listing is not one statement");
    return texts.first();
}

} // namespace tarvessa::bench
