#include "support/FaultProxy.h"

#include "support/TestError.h"

#include <QDir>
#include <algorithm>
#include <optional>
#include <tuple>

namespace tarvessa::teste {

namespace {

constexpr int ComQuery = 0x03;
constexpr int ComStmtPrepare = 0x16;
constexpr qsizetype Cabecalho = 4;          // three bytes of length, one of sequence
constexpr qsizetype PacoteCheio = 0xffffff; // a packet this long goes on in the next one

/// The size of the command or other message at the start of `bytes` with all its packets, none when
/// it is not whole yet.
std::optional<qsizetype> tamanhoDaMensagem(const QByteArray& bytes) {
    qsizetype fim = 0;
    for (;;) {
        if (bytes.size() < fim + Cabecalho) {
            return std::nullopt;
        }
        const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData()) + fim;
        const qsizetype corpo = p[0] | p[1] << 8 | p[2] << 16;
        fim += Cabecalho + corpo;
        if (bytes.size() < fim) {
            return std::nullopt;
        }
        if (corpo < PacoteCheio) {
            return fim;
        }
    }
}

/// The statement that a message carries; null when it carries none. Only commands start at sequence
/// number 0; what a client sends while logging in does not.
QByteArray textoDe(const QByteArray& mensagem) {
    if (mensagem.size() <= Cabecalho || mensagem[3] != 0) {
        return {};
    }
    const int comando = static_cast<unsigned char>(mensagem[Cabecalho]);
    if (comando != ComQuery && comando != ComStmtPrepare) {
        return {};
    }
    QByteArray texto;
    texto.reserve(mensagem.size());
    for (qsizetype inicio = 0; inicio < mensagem.size(); inicio += Cabecalho + PacoteCheio) {
        texto += mensagem.mid(inicio + Cabecalho, PacoteCheio);
    }
    return texto.mid(1);
}

/// A unix socket's path may be short only, whatever the machine's folder for temporary files is called.
QString pastaCurta() {
#ifdef _WIN32
    return QDir::tempPath() + QStringLiteral("/tarvessa-XXXXXX");
#else
    return QStringLiteral("/tmp/tarvessa-XXXXXX");
#endif
}

} // namespace

FaultProxy::FaultProxy(const QString& servidor) : m_servidor(servidor), m_pasta(pastaCurta()) {
    if (!m_pasta.isValid()) {
        throw TestError(m_pasta.errorString());
    }
    std::tie(m_escuta, m_socket) = soquete::escuta(m_pasta.path());
    std::tie(m_despertador, m_despertado) = soquete::despertador();
    m_linha = std::thread([this] { percorre(); });
}

FaultProxy::~FaultProxy() {
    m_encerra = true;
    acorda();
    m_linha.join();
    soquete::fecha(m_escuta);
    soquete::fecha(m_despertador);
    if (m_despertado != m_despertador) {
        soquete::fecha(m_despertado);
    }
}

void FaultProxy::cortaAntesDe(int k) {
    const std::lock_guard trava(m_trava);
    m_textos.clear();
    m_cortado = QByteArray();
    m_faltam = k;
}

void FaultProxy::marca() {
    cortaAntesDe(0);
}

QList<QByteArray> FaultProxy::textos() const {
    const std::lock_guard trava(m_trava);
    return m_textos;
}

QByteArray FaultProxy::cortado() const {
    const std::lock_guard trava(m_trava);
    return m_cortado;
}

void FaultProxy::acorda() {
    // A full pipe already wakes the thread, so the outcome does not matter.
    QByteArray sinal(1, '\0');
    soquete::escreve(m_despertador, sinal);
}

void FaultProxy::percorre() {
    std::vector<soquete::Vigia> vigiados;
    while (!m_encerra) {
        vigiados.clear();
        vigiados.push_back({m_escuta, true, false});
        vigiados.push_back({m_despertado, true, false});
        for (const Par& par : m_pares) {
            // A side whose counterpart lags is not read, so that nothing piles up here.
            vigiados.push_back(
                {par.cliente, par.paraServidor.size() < soquete::PendenteDemais, !par.paraCliente.isEmpty()});
            vigiados.push_back({par.servidor, par.paraCliente.size() < soquete::PendenteDemais,
                                !par.paraServidor.isEmpty()});
        }
        if (!soquete::espera(vigiados)) {
            continue;
        }
        for (size_t i = 0; i < m_pares.size(); ++i) {
            Par& par = m_pares[i];
            if (!atende(par, vigiados[2 + 2 * i].chegou, vigiados[3 + 2 * i].chegou)) {
                fecha(par);
            }
        }
        std::erase_if(m_pares, [](const Par& par) { return par.cliente == soquete::Nenhuma; });
        if (vigiados[0].chegou) {
            aceita();
        }
    }
    std::for_each(m_pares.begin(), m_pares.end(), fecha);
}

void FaultProxy::aceita() {
    const soquete::Alca cliente = soquete::aceita(m_escuta);
    if (cliente == soquete::Nenhuma) {
        return;
    }
    const soquete::Alca servidor = soquete::liga(m_servidor);
    if (servidor == soquete::Nenhuma) {
        soquete::fecha(cliente);
        return;
    }
    Par par;
    par.cliente = cliente;
    par.servidor = servidor;
    m_pares.push_back(par);
}

// False when the pair is to be closed: at a cut, or when either side has ended.
bool FaultProxy::atende(Par& par, bool doCliente, bool doServidor) {
    bool aberto = true;
    if (doServidor) {
        aberto = soquete::le(par.servidor, par.paraCliente);
    }
    if (doCliente) {
        const bool clienteAberto = soquete::le(par.cliente, par.recebido);
        if (!encaminhaComandos(par)) {
            return false;
        }
        aberto = aberto && clienteAberto;
    }
    const bool foiAoServidor = soquete::escreve(par.servidor, par.paraServidor);
    const bool foiAoCliente = soquete::escreve(par.cliente, par.paraCliente);
    return aberto && foiAoServidor && foiAoCliente;
}

// Whole messages only: nothing of a statement that is to be cut may have gone before.
bool FaultProxy::encaminhaComandos(Par& par) {
    while (const auto tamanho = tamanhoDaMensagem(par.recebido)) {
        const QByteArray mensagem = par.recebido.left(*tamanho);
        par.recebido.remove(0, *tamanho);
        if (!deixaPassar(mensagem)) {
            soquete::escreve(par.servidor, par.paraServidor);
            return false;
        }
        par.paraServidor += mensagem;
    }
    return true;
}

bool FaultProxy::deixaPassar(const QByteArray& comando) {
    const QByteArray texto = textoDe(comando);
    if (texto.isNull()) {
        return true;
    }
    const std::lock_guard trava(m_trava);
    if (m_faltam > 0 && --m_faltam == 0) {
        m_cortado = texto;
        return false;
    }
    m_textos += texto;
    return true;
}

void FaultProxy::fecha(Par& par) {
    soquete::fecha(par.cliente);
    soquete::fecha(par.servidor);
    par.cliente = soquete::Nenhuma;
    par.servidor = soquete::Nenhuma;
}

} // namespace tarvessa::teste
