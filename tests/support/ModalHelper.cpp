#include "support/ModalHelper.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QTest>
#include <utility>

namespace tarvessa::teste {

namespace {

constexpr int IntervaloMs = 2;
constexpr int EsperaDoFimMs = 2000;

QString descricao(const QWidget* janela) {
    return QStringLiteral("%1 \"%2\" (%3)")
        .arg(QLatin1String(janela->metaObject()->className()), janela->windowTitle(), janela->objectName());
}

} // namespace

ModalHelper::ModalHelper() {
    m_relogio.setInterval(IntervaloMs);
    connect(&m_relogio, &QTimer::timeout, this, &ModalHelper::observa);
    m_relogio.start();
}

void ModalHelper::espera(const QString& texto, QMessageBox::StandardButton resposta) {
    m_anunciadas += {Anunciada::Tipo::CaixaIgual, texto, resposta, {}};
}

void ModalHelper::esperaContendo(const QString& trecho, QMessageBox::StandardButton resposta) {
    m_anunciadas += {Anunciada::Tipo::CaixaContendo, trecho, resposta, {}};
}

void ModalHelper::aoAbrir(std::function<void(QWidget*)> acao) {
    m_anunciadas += {Anunciada::Tipo::Janela, QString(), QMessageBox::NoButton, std::move(acao)};
}

QString ModalHelper::confere() const {
    if (!m_erro.isEmpty() || m_anunciadas.isEmpty()) {
        return m_erro;
    }
    const Anunciada& primeira = m_anunciadas.first();
    return QStringLiteral("%1 announced window(s) did not come, first of them: %2")
        .arg(m_anunciadas.size())
        .arg(primeira.tipo == Anunciada::Tipo::Janela ? QStringLiteral("a modal window") : primeira.texto);
}

bool ModalHelper::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::Hide) {
        // The same object may be shown again, and is then another window to this helper.
        objeto->removeEventFilter(this);
        m_emTratamento.removeAll(QPointer<QWidget>(static_cast<QWidget*>(objeto)));
    }
    return false;
}

void ModalHelper::observa() {
    QWidget* janela = QApplication::activeModalWidget();
    if (janela == nullptr || m_emTratamento.contains(janela)) {
        return;
    }
    m_emTratamento += janela;
    janela->installEventFilter(this);
    // Not from here: a timer does not fire again while its own slot runs, and the answer may open
    // the next window inside that slot.
    QMetaObject::invokeMethod(
        this,
        [this, alvo = QPointer<QWidget>(janela)] {
            if (alvo != nullptr && alvo->isVisible()) {
                trata(alvo);
            }
        },
        Qt::QueuedConnection);
}

void ModalHelper::trata(QWidget* janela) {
    if (auto* caixa = qobject_cast<QMessageBox*>(janela)) {
        trataCaixa(caixa);
    } else {
        trataJanela(janela);
    }
}

void ModalHelper::trataCaixa(QMessageBox* caixa) {
    const Caixa vista{caixa->windowTitle(),     caixa->icon(),         caixa->text(),
                      caixa->informativeText(), caixa->detailedText(), caixa->standardButtons()};
    m_caixas += vista;
    if (m_anunciadas.isEmpty() || !corresponde(m_anunciadas.first(), vista)) {
        anotaErro(
            QStringLiteral("unannounced box: %1 %2 %3").arg(vista.texto, vista.informativo, vista.detalhes));
        fecha(caixa);
        return;
    }
    const Anunciada anunciada = m_anunciadas.takeFirst();
    if (anunciada.resposta == QMessageBox::NoButton) {
        fecha(caixa);
    } else if (QAbstractButton* botao = caixa->button(anunciada.resposta)) {
        QTest::mouseClick(botao, Qt::LeftButton);
    } else {
        anotaErro(QStringLiteral("box without the button asked for: %1").arg(vista.texto));
        fecha(caixa);
    }
}

void ModalHelper::trataJanela(QWidget* janela) {
    if (m_anunciadas.isEmpty() || m_anunciadas.first().tipo != Anunciada::Tipo::Janela) {
        anotaErro(QStringLiteral("unannounced window: %1").arg(descricao(janela)));
        fecha(janela);
        return;
    }
    const QPointer<QWidget> alvo(janela);
    const QString qual = descricao(janela);
    m_anunciadas.takeFirst().acao(janela);
    // The end may be on its way through the event queue.
    if (!QTest::qWaitFor([&alvo] { return alvo == nullptr || !alvo->isVisible(); }, EsperaDoFimMs)) {
        anotaErro(QStringLiteral("window left open: %1").arg(qual));
        fecha(alvo);
    }
}

void ModalHelper::fecha(QWidget* janela) {
    const QPointer<QWidget> alvo(janela);
    QTest::keyClick(janela, Qt::Key_Escape);
    if (alvo == nullptr || !alvo->isVisible()) {
        return;
    }
    // Escape was not enough (a box without a way out, a window that swallows the key).
    if (auto* dialogo = qobject_cast<QDialog*>(alvo.data())) {
        dialogo->done(QDialog::Rejected);
    } else {
        alvo->hide();
    }
}

void ModalHelper::anotaErro(const QString& erro) {
    if (m_erro.isEmpty()) {
        m_erro = erro;
    }
}

bool ModalHelper::corresponde(const Anunciada& anunciada, const Caixa& caixa) {
    switch (anunciada.tipo) {
    case Anunciada::Tipo::CaixaIgual:
        return caixa.texto == anunciada.texto;
    case Anunciada::Tipo::CaixaContendo:
        return caixa.texto.contains(anunciada.texto) || caixa.informativo.contains(anunciada.texto) ||
               caixa.detalhes.contains(anunciada.texto);
    case Anunciada::Tipo::Janela:
        return false;
    }
    return false;
}

} // namespace tarvessa::teste
