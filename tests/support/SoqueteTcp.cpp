#include "support/Soquete.h"
#include "support/TestError.h"

#include <optional>
#include <winsock2.h>

namespace tarvessa::teste::soquete {

namespace {

/// Winsock wants to be opened before the first call of a program.
void abre() {
    static const bool Aberto = [] {
        WSADATA dados{};
        return WSAStartup(MAKEWORD(2, 2), &dados) == 0;
    }();
    if (!Aberto) {
        throw TestError(QStringLiteral("no sockets on this machine"));
    }
}

TestError erroDoSistema(const char* chamada) {
    return TestError(QStringLiteral("%1: %2").arg(QLatin1String(chamada)).arg(WSAGetLastError()));
}

std::optional<quint16> portaDe(const QString& endereco) {
    const QString inicio = QStringLiteral("127.0.0.1:");
    bool numero = false;
    const quint16 porta = QStringView(endereco).mid(inicio.size()).toUShort(&numero);
    return numero && endereco.startsWith(inicio) ? std::optional(porta) : std::nullopt;
}

sockaddr_in local(quint16 porta) {
    sockaddr_in resultado{};
    resultado.sin_family = AF_INET;
    resultado.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    resultado.sin_port = htons(porta);
    return resultado;
}

void naoEspera(Alca alca) {
    u_long sim = 1;
    ioctlsocket(static_cast<SOCKET>(alca), FIONBIO, &sim);
}

Alca novo(int tipo) {
    abre();
    const SOCKET alca = ::socket(AF_INET, tipo, 0);
    if (alca == INVALID_SOCKET) {
        throw erroDoSistema("socket");
    }
    return static_cast<Alca>(alca);
}

quint16 portaQueTem(Alca alca) {
    sockaddr_in proprio{};
    int tamanho = sizeof proprio;
    ::getsockname(static_cast<SOCKET>(alca), reinterpret_cast<sockaddr*>(&proprio), &tamanho);
    return ntohs(proprio.sin_port);
}

bool prende(Alca alca) {
    const sockaddr_in qualquer = local(0);
    return ::bind(static_cast<SOCKET>(alca), reinterpret_cast<const sockaddr*>(&qualquer), sizeof qualquer) ==
           0;
}

} // namespace

std::pair<Alca, QString> escuta(const QString& /*pasta*/) {
    const Alca alca = novo(SOCK_STREAM);
    if (!prende(alca) || ::listen(static_cast<SOCKET>(alca), 16) != 0) {
        const TestError erro = erroDoSistema("listen");
        fecha(alca);
        throw erro;
    }
    naoEspera(alca);
    return {alca, QStringLiteral("127.0.0.1:%1").arg(portaQueTem(alca))};
}

Alca aceita(Alca escuta) {
    const SOCKET aceito = ::accept(static_cast<SOCKET>(escuta), nullptr, nullptr);
    if (aceito == INVALID_SOCKET) {
        return Nenhuma;
    }
    const auto alca = static_cast<Alca>(aceito);
    naoEspera(alca);
    return alca;
}

Alca liga(const QString& endereco) {
    const auto porta = portaDe(endereco);
    if (!porta) {
        return Nenhuma;
    }
    const sockaddr_in destino = local(*porta);
    const Alca alca = novo(SOCK_STREAM);
    if (::connect(static_cast<SOCKET>(alca), reinterpret_cast<const sockaddr*>(&destino), sizeof destino) !=
        0) {
        fecha(alca);
        return Nenhuma;
    }
    naoEspera(alca);
    return alca;
}

// A datagram socket connected to itself.
std::pair<Alca, Alca> despertador() {
    const Alca alca = novo(SOCK_DGRAM);
    if (!prende(alca)) {
        throw erroDoSistema("bind");
    }
    const sockaddr_in proprio = local(portaQueTem(alca));
    if (::connect(static_cast<SOCKET>(alca), reinterpret_cast<const sockaddr*>(&proprio), sizeof proprio) !=
        0) {
        throw erroDoSistema("connect");
    }
    naoEspera(alca);
    return {alca, alca};
}

void fecha(Alca alca) {
    ::closesocket(static_cast<SOCKET>(alca));
}

QStringList linhasDaFonte(const QString& endereco) {
    if (const auto porta = portaDe(endereco)) {
        return {QStringLiteral("SERVER = 127.0.0.1"), QStringLiteral("PORT = %1").arg(*porta)};
    }
    return {QStringLiteral("SERVER = localhost"), QStringLiteral("SOCKET = ") + endereco};
}

} // namespace tarvessa::teste::soquete
