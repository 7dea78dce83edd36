#include "bench/ProductSearch.h"

#include "bench/support/Painted.h"
#include "products/PesquisaProduto.h"
#include "products/SelecionaProd.h"
#include "support/PrivateServer.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QTimer>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

void fillProducts(test::PrivateServer& server) {
    server.execute(
        u"TRUNCATE produtos;"
        "INSERT INTO produtos (codfabr, descricao, aplicacao, observacao, Venda, Venda2, Venda3, Venda4, "
        "quantidade, quantidade2, Ultima_Alteracao, Unidade, LinhaProd) "
        "SELECT LPAD(seq, 13, '0'), CONCAT(ELT(1 + seq % 7, 'PÃO DE FORMA', 'BISCOITO AMANTEIGADO', "
        "'BOLO', 'REFRIGERANTE', 'EMBALAGEM', 'ROSCA', 'TORTA'), ' ', IF(seq = 150000, 'ESPARSO ', ''), "
        "IF(seq % 2000 = 7, 'CENTENO ', ''), IF(seq % 40 = 3, 'MILHEIRO ', ''), seq, "
        "IF(seq DIV 40 % 10 = 3, ' COM CASTANHA-DO-PARÁ, NOZES E UVA-PASSA, FAMÍLIA, COM DOZE', ' 500G')), "
        "'FABRICAÇÃO PRÓPRIA', IF(seq % 3 = 0, 'CONFERIR A DATA NA ENTREGA.', NULL), seq % 90 + 0.65, "
        "seq % 90 + 0.60, seq % 90 + 0.55, seq % 90 + 0.50, seq % 3000, seq % 300, "
        "CURDATE() - INTERVAL seq % 900 DAY, ELT(1 + seq % 3, 'UN', 'KG', 'CX'), seq % 5 = 0 "
        "FROM seq_1_to_200000;"
        "ANALYZE TABLE produtos"_s);
}

Taken timedSearch(const Search& search, QWidget* form) {
    Taken end;
    int shown = 1;
    QTimer whenOpen;
    whenOpen.setSingleShot(true);
    whenOpen.callOnTimeout([&] {
        auto* screen = qobject_cast<SelecionaProd*>(QApplication::activeModalWidget());
        if (!screen)
            return;
        waitPainted(screen->grid()->viewport());
        end = now();
        shown = screen->grid()->rows() - 1;
        screen->reject();
    });
    whenOpen.start(0);
    QString text = QString::fromUtf16(search.word);
    const Taken start = now();
    const QString code = PesquisaProduto(text, form);
    if (search.matches == 1)
        end = now();
    if (shown != search.matches || (search.matches > 1) != code.isEmpty())
        throw std::runtime_error("the search did not find what there is");
    return end - start;
}

} // namespace tarvessa::bench
