#include "bench/RunScreen.h"
#include "bench/Screens.h"
#include "bench/support/BoxAnswerer.h"
#include "bench/support/ModalGrid.h"
#include "bench/support/Workload.h"
#include "products/PesquisaProduto.h"
#include "products/PromocaoPedidos.h"
#include "support/Hands.h"
#include "support/PrivateServer.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

/// A form with the search behind it; every product there is matches.
class SearchStage : public Stage {
  public:
    explicit SearchStage(int size) : m_size(size) {
        m_form.show();
        waitPainted(&m_form);
    }

    void run() override {
        const ModalGrid found(u"Grid"_s);
        QString text = u"MILHEIRO"_s;
        PesquisaProduto(text, &m_form);
        if (found.rows() != m_size)
            throw std::runtime_error("the search did not find what there is");
    }

  private:
    Session m_session;
    QWidget m_form;
    int m_size;
};

/// The promotional price for as many open lines of one product; the screen closes at the end.
class PromotionStage : public Stage {
  public:
    explicit PromotionStage(int size) : m_size(size) {
        if (!test::showActive(&m_screen))
            throw std::runtime_error("the promotional price did not open");
    }

    void run() override {
        const BoxAnswerer answerer;
        const test::Hands hands(&m_screen);
        hands.fill(u"Descricao"_s, u"PRODUTO 500"_s);
        hands.key(Qt::Key_Return);
        waitPainted(hands.grid()->viewport());
        if (hands.grid()->rows() != m_size + 1)
            throw std::runtime_error("the promotional price did not list the lines");
        hands.press(u"Command2"_s);
        hands.fill(u"Venda"_s, u"9,99"_s);
        m_screen.findChild<QPushButton*>(u"Command1"_s)->click();
        if (!m_screen.hasChangedPrices())
            throw std::runtime_error("the promotional price was not stored");
    }

  private:
    Session m_session;
    PromocaoPedidos m_screen{nullptr};
    int m_size;
};

// One description in ten is too long for one line.
void fillMatching(test::PrivateServer& server, int products) {
    server.execute(
        u"TRUNCATE produtos;"
        "INSERT INTO produtos (codfabr, descricao, aplicacao, observacao, Venda, Venda2, Venda3, Venda4, "
        "quantidade, quantidade2, Ultima_Alteracao, Unidade, LinhaProd) "
        "SELECT LPAD(seq, 13, '0'), CONCAT('BISCOITO MILHEIRO ', seq, IF(seq % 10 = 3, ' COM "
        "CASTANHA-DO-PARÁ, NOZES E UVA-PASSA, FAMÍLIA, COM DOZE', ' 500G')), 'FABRICAÇÃO PRÓPRIA', "
        "IF(seq % 3 = 0, 'CONFERIR A DATA NA ENTREGA.', NULL), seq % 90 + 0.65, seq % 90 + 0.60, "
        "seq % 90 + 0.55, seq % 90 + 0.50, seq % 3000, seq % 300, CURDATE() - INTERVAL seq % 900 DAY, "
        "ELT(1 + seq % 3, 'UN', 'KG', 'CX'), seq % 5 = 0 FROM seq_1_to_%1; ANALYZE TABLE produtos"_s.arg(
            products));
}

} // namespace

QList<Screen> productScreens(test::PrivateServer& server, const Workload& workload) {
    return {
        {.what = u"search that finds %1 products"_s,
         .load = [&server](int size) { fillMatching(server, size); },
         .open = [](int size) { return std::make_unique<SearchStage>(size); },
         .linkSize = 20,
         .linkRuns = 10,
         .growth = {10, 100, 1000, 10000, 100000}},
        {.what = u"promotional price for %1 lines"_s,
         .load =
             [&server, &workload](int size) {
                 workload.products();
                 workload.listing(size);
                 server.execute(u"UPDATE orcamento SET codigo = '000500'"_s);
             },
         .open = [](int size) { return std::make_unique<PromotionStage>(size); },
         .linkSize = 10,
         .changesData = true},
    };
}

} // namespace tarvessa::bench
