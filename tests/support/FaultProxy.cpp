#include "support/FaultProxy.h"

#include "support/TestError.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarvessa::teste {

namespace {

constexpr int ComQuery = 0x03;
constexpr int ComStmtPrepare = 0x16;
constexpr qsizetype Cabecalho = 4;          // three bytes of length, one of sequence
constexpr qsizetype PacoteCheio = 0xffffff; // a packet this long goes on in the next one
constexpr qsizetype PendenteDemais = 1 << 20;
constexpr qsizetype Bloco = 65536;

TestError erroDoSistema(const char* chamada) {
    return TestError(
        QStringLiteral("%1: %2").arg(QLatin1String(chamada), QString::fromLocal8Bit(strerror(errno))));
}

sockaddr_un endereco(const QString& caminho) {
    const QByteArray nome = QFile::encodeName(caminho);
    sockaddr_un resultado{};
    resultado.sun_family = AF_UNIX;
    if (nome.size() >= static_cast<qsizetype>(sizeof resultado.sun_path)) {
        throw TestError(QStringLiteral("too long for a socket: %1").arg(caminho));
    }
    std::copy(nome.begin(), nome.end(), resultado.sun_path);
    return resultado;
}

int novoSocket() {
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd < 0) {
        throw erroDoSistema("socket");
    }
    return fd;
}

/// A connection to the server, or -1.
int ligaAoServidor(const QString& caminho) {
    const sockaddr_un destino = endereco(caminho);
    const int fd = novoSocket();
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&destino), sizeof destino) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

/// Adds what can be read now to `destino`; false when the other side has closed.
bool le(int fd, QByteArray& destino) {
    for (;;) {
        const qsizetype antes = destino.size();
        destino.resize(antes + Bloco);
        const ssize_t lidos = ::recv(fd, destino.data() + antes, Bloco, 0);
        destino.resize(antes + std::max<ssize_t>(lidos, 0));
        if (lidos > 0 && lidos < Bloco) {
            return true;
        }
        if (lidos > 0 && destino.size() > PendenteDemais) {
            return true;
        }
        if (lidos == 0) {
            return false;
        }
        if (lidos < 0 && errno != EINTR) {
            return errno == EAGAIN || errno == EWOULDBLOCK;
        }
    }
}

/// Sends what can be sent now and takes it off `origem`; false when the other side has closed.
bool escreve(int fd, QByteArray& origem) {
    qsizetype enviados = 0;
    bool aberto = true;
    while (enviados < origem.size()) {
        const ssize_t agora = ::send(fd, origem.constData() + enviados,
                                     static_cast<size_t>(origem.size() - enviados), MSG_NOSIGNAL);
        if (agora > 0) {
            enviados += agora;
        } else if (errno != EINTR) {
            aberto = errno == EAGAIN || errno == EWOULDBLOCK;
            break;
        }
    }
    origem.remove(0, enviados);
    return aberto;
}

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

} // namespace

FaultProxy::FaultProxy(const QString& servidor)
    : m_servidor(servidor), m_pasta(QStringLiteral("/tmp/tarvessa-XXXXXX")) {
    if (!m_pasta.isValid()) {
        throw TestError(m_pasta.errorString());
    }
    const sockaddr_un local = endereco(socket());
    m_escuta = novoSocket();
    if (::bind(m_escuta, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0 ||
        ::listen(m_escuta, 16) != 0 ||
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, m_despertador) != 0) {
        const TestError erro = erroDoSistema("listen");
        ::close(m_escuta);
        throw erro;
    }
    m_linha = std::thread([this] { percorre(); });
}

FaultProxy::~FaultProxy() {
    m_encerra = true;
    acorda();
    m_linha.join();
    for (const int fd : {m_escuta, m_despertador[0], m_despertador[1]}) {
        ::close(fd);
    }
}

QString FaultProxy::socket() const {
    return m_pasta.filePath(QStringLiteral("s"));
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
    const char sinal = 0;
    // A full pipe already wakes the thread, so the outcome does not matter.
    [[maybe_unused]] const ssize_t escritos = ::send(m_despertador[0], &sinal, 1, MSG_NOSIGNAL);
}

void FaultProxy::percorre() {
    std::vector<pollfd> vigiados;
    while (!m_encerra) {
        vigiados.clear();
        vigiados.push_back({m_escuta, POLLIN, 0});
        vigiados.push_back({m_despertador[1], POLLIN, 0});
        for (const Par& par : m_pares) {
            // A side whose counterpart lags is not read, so that nothing piles up here.
            const int doCliente = (par.paraServidor.size() < PendenteDemais ? POLLIN : 0) |
                                  (par.paraCliente.isEmpty() ? 0 : POLLOUT);
            const int doServidor = (par.paraCliente.size() < PendenteDemais ? POLLIN : 0) |
                                   (par.paraServidor.isEmpty() ? 0 : POLLOUT);
            vigiados.push_back({par.cliente, static_cast<short>(doCliente), 0});
            vigiados.push_back({par.servidor, static_cast<short>(doServidor), 0});
        }
        if (::poll(vigiados.data(), vigiados.size(), -1) < 0) {
            continue;
        }
        for (size_t i = 0; i < m_pares.size(); ++i) {
            Par& par = m_pares[i];
            if (!atende(par, vigiados[2 + 2 * i].revents, vigiados[3 + 2 * i].revents)) {
                fecha(par);
            }
        }
        std::erase_if(m_pares, [](const Par& par) { return par.cliente < 0; });
        if (vigiados[0].revents != 0) {
            aceita();
        }
    }
    std::for_each(m_pares.begin(), m_pares.end(), fecha);
}

void FaultProxy::aceita() {
    const int cliente = ::accept4(m_escuta, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (cliente < 0) {
        return;
    }
    const int servidor = ligaAoServidor(m_servidor);
    if (servidor < 0) {
        ::close(cliente);
        return;
    }
    Par par;
    par.cliente = cliente;
    par.servidor = servidor;
    m_pares.push_back(par);
}

// False when the pair is to be closed: at a cut, or when either side has ended.
bool FaultProxy::atende(Par& par, short eventosDoCliente, short eventosDoServidor) {
    constexpr short Chegou = POLLIN | POLLHUP | POLLERR;
    bool aberto = true;
    if ((eventosDoServidor & Chegou) != 0) {
        aberto = le(par.servidor, par.paraCliente);
    }
    if ((eventosDoCliente & Chegou) != 0) {
        const bool clienteAberto = le(par.cliente, par.recebido);
        if (!encaminhaComandos(par)) {
            return false;
        }
        aberto = aberto && clienteAberto;
    }
    const bool foiAoServidor = escreve(par.servidor, par.paraServidor);
    const bool foiAoCliente = escreve(par.cliente, par.paraCliente);
    return aberto && foiAoServidor && foiAoCliente;
}

// Whole messages only: nothing of a statement that is to be cut may have gone before.
bool FaultProxy::encaminhaComandos(Par& par) {
    while (const auto tamanho = tamanhoDaMensagem(par.recebido)) {
        const QByteArray mensagem = par.recebido.left(*tamanho);
        par.recebido.remove(0, *tamanho);
        if (!deixaPassar(mensagem)) {
            escreve(par.servidor, par.paraServidor);
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
    ::close(par.cliente);
    ::close(par.servidor);
    par.cliente = -1;
    par.servidor = -1;
}

} // namespace tarvessa::teste
