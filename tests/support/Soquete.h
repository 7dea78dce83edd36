#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

/// The sockets that the proxy is made of: unix sockets, and on Windows, where the driver has none, TCP
/// within this machine. An address is the path of a unix socket there and "127.0.0.1:port" here.
namespace tarvessa::teste::soquete {

using Alca = qintptr;
constexpr Alca Nenhuma = -1;
constexpr qsizetype PendenteDemais = 1 << 20;

/// A socket to be watched, for what, and whether something came or the other side has gone.
struct Vigia {
    Alca alca;
    bool ler;
    bool escrever;
    bool chegou = false;
};

/// A socket that listens at an address of its own, the second value; a unix socket lies in `pasta`.
/// Raises TestError.
std::pair<Alca, QString> escuta(const QString& pasta);

/// The next connection that waits at a listening socket; Nenhuma when there is none.
Alca aceita(Alca escuta);

/// A connection to `endereco`, or Nenhuma.
Alca liga(const QString& endereco);

/// Two ends for waking a thread out of `espera`: what goes into the first comes out of the second.
/// Raises TestError.
std::pair<Alca, Alca> despertador();

/// Waits until one of the sockets has what it is watched for; false when interrupted.
bool espera(std::vector<Vigia>& vigiados);

/// Adds what can be read now to `destino`, within reason; false when the other side has closed.
bool le(Alca alca, QByteArray& destino);

/// Sends what can be sent now and takes it off `origem`; false when the other side has closed.
bool escreve(Alca alca, QByteArray& origem);

void fecha(Alca alca);

/// The lines of a data source that lead to `endereco`. Where it is none, they lead to no server.
QStringList linhasDaFonte(const QString& endereco);

} // namespace tarvessa::teste::soquete
