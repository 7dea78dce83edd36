#include "support/Soquete.h"
#include "support/TestError.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarvessa::teste::soquete {

namespace {

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

Alca novo() {
    const int alca = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (alca < 0) {
        throw erroDoSistema("socket");
    }
    return alca;
}

} // namespace

std::pair<Alca, QString> escuta(const QString& pasta) {
    const QString caminho = pasta + QStringLiteral("/s");
    const sockaddr_un local = endereco(caminho);
    const Alca alca = novo();
    if (::bind(static_cast<int>(alca), reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0 ||
        ::listen(static_cast<int>(alca), 16) != 0) {
        const TestError erro = erroDoSistema("listen");
        fecha(alca);
        throw erro;
    }
    return {alca, caminho};
}

Alca aceita(Alca escuta) {
    return ::accept4(static_cast<int>(escuta), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
}

Alca liga(const QString& caminho) {
    const sockaddr_un destino = endereco(caminho);
    const Alca alca = novo();
    if (::connect(static_cast<int>(alca), reinterpret_cast<const sockaddr*>(&destino), sizeof destino) != 0) {
        fecha(alca);
        return Nenhuma;
    }
    return alca;
}

std::pair<Alca, Alca> despertador() {
    std::array<int, 2> pontas{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pontas.data()) != 0) {
        throw erroDoSistema("socketpair");
    }
    return {pontas[0], pontas[1]};
}

void fecha(Alca alca) {
    ::close(static_cast<int>(alca));
}

QStringList linhasDaFonte(const QString& caminho) {
    return {QStringLiteral("SERVER = localhost"), QStringLiteral("SOCKET = ") + caminho};
}

} // namespace tarvessa::teste::soquete
