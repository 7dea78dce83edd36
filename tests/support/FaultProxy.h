#pragma once

#include "support/Soquete.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTemporaryDir>
#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace tarvessa::teste {

/// A proxy in front of the server, on a socket and in a thread of its own. It reads enough of the
/// protocol to see each statement before it goes on, and can cut the connection there.
///
/// A statement is what the client sends as a query or to be prepared; executing what was prepared is
/// not another one. It is seen as the driver sends it, which is without blanks at its ends. Meant for clear,
/// uncompressed connections, as they are within a machine.
class FaultProxy {
  public:
    /// Listens in front of the server at `servidor`. Raises TestError.
    explicit FaultProxy(const QString& servidor);
    ~FaultProxy();
    FaultProxy(const FaultProxy&) = delete;
    FaultProxy& operator=(const FaultProxy&) = delete;

    /// The address to connect to instead of the server's.
    QString socket() const { return m_socket; }

    /// Starts counting anew, forgets what was seen, and cuts the connection on both sides before the
    /// k-th statement from now (the first is 1) reaches the server. It cuts once; connections opened
    /// after that pass.
    void cortaAntesDe(int k);

    /// Forgets what was seen and any cut still to come.
    void marca();

    /// The statements that went on to the server since `marca` or `cortaAntesDe`, byte for byte.
    QList<QByteArray> textos() const;

    /// The statement at which the connection was cut, byte for byte; null when none was.
    QByteArray cortado() const;

  private:
    /// One accepted connection and its counterpart to the server.
    struct Par {
        soquete::Alca cliente = soquete::Nenhuma;
        soquete::Alca servidor = soquete::Nenhuma;
        QByteArray recebido; // from the client, not yet a whole command
        QByteArray paraServidor;
        QByteArray paraCliente;
    };

    void percorre();
    void aceita();
    bool atende(Par& par, bool doCliente, bool doServidor);
    bool encaminhaComandos(Par& par);
    bool deixaPassar(const QByteArray& comando);
    void acorda();
    static void fecha(Par& par);

    QString m_servidor;
    QTemporaryDir m_pasta;
    QString m_socket;
    soquete::Alca m_escuta = soquete::Nenhuma;
    soquete::Alca m_despertador = soquete::Nenhuma;
    soquete::Alca m_despertado = soquete::Nenhuma;
    std::vector<Par> m_pares; // the thread's alone
    std::atomic<bool> m_encerra = false;

    mutable std::mutex m_trava;
    QList<QByteArray> m_textos;
    QByteArray m_cortado;
    int m_faltam = 0; // statements until the cut, that one included; 0 for no cut

    std::thread m_linha;
};

} // namespace tarvessa::teste
