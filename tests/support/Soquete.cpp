#include "support/Soquete.h"

#include <algorithm>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#endif

namespace tarvessa::teste::soquete {

namespace {

constexpr qsizetype Bloco = 65536;

#ifdef _WIN32

using Sistema = SOCKET;
using Pedido = WSAPOLLFD;
constexpr int SemSinal = 0;

int consulta(std::vector<Pedido>& pedidos) {
    return WSAPoll(pedidos.data(), static_cast<ULONG>(pedidos.size()), -1);
}
bool interrompido() {
    return false;
}
bool maisTarde() {
    return WSAGetLastError() == WSAEWOULDBLOCK;
}

#else

using Sistema = int;
using Pedido = pollfd;
constexpr int SemSinal = MSG_NOSIGNAL;

int consulta(std::vector<Pedido>& pedidos) {
    return ::poll(pedidos.data(), pedidos.size(), -1);
}
bool interrompido() {
    return errno == EINTR;
}
bool maisTarde() {
    return errno == EAGAIN || errno == EWOULDBLOCK;
}

#endif

} // namespace

bool espera(std::vector<Vigia>& vigiados) {
    std::vector<Pedido> pedidos;
    for (const Vigia& vigia : vigiados) {
        const int eventos = (vigia.ler ? POLLIN : 0) | (vigia.escrever ? POLLOUT : 0);
        pedidos.push_back({static_cast<Sistema>(vigia.alca), static_cast<short>(eventos), 0});
    }
    if (consulta(pedidos) < 0) {
        return false;
    }
    for (size_t i = 0; i < pedidos.size(); ++i) {
        vigiados[i].chegou = (pedidos[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0;
    }
    return true;
}

bool le(Alca alca, QByteArray& destino) {
    for (;;) {
        const qsizetype antes = destino.size();
        destino.resize(antes + Bloco);
        const auto lidos =
            static_cast<qsizetype>(::recv(static_cast<Sistema>(alca), destino.data() + antes, Bloco, 0));
        destino.resize(antes + std::max<qsizetype>(lidos, 0));
        if (lidos > 0 && (lidos < Bloco || destino.size() > PendenteDemais)) {
            return true;
        }
        if (lidos == 0) {
            return false;
        }
        if (lidos < 0 && !interrompido()) {
            return maisTarde();
        }
    }
}

bool escreve(Alca alca, QByteArray& origem) {
    qsizetype enviados = 0;
    bool aberto = true;
    while (enviados < origem.size()) {
        const auto agora = static_cast<qsizetype>(::send(
            static_cast<Sistema>(alca), origem.constData() + enviados, origem.size() - enviados, SemSinal));
        if (agora > 0) {
            enviados += agora;
        } else if (!interrompido()) {
            aberto = maisTarde();
            break;
        }
    }
    origem.remove(0, enviados);
    return aberto;
}

} // namespace tarvessa::teste::soquete
