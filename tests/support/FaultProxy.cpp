#include "support/FaultProxy.h"

#include "support/TestError.h"

#include <QDir>
#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

namespace tarvessa::test {

namespace {

constexpr int ComQuery = 0x03;
constexpr int ComStmtPrepare = 0x16;
constexpr int ComStmtExecute = 0x17;
constexpr qsizetype HeaderSize = 4;        // three bytes of length, one of sequence
constexpr qsizetype FullPacket = 0xffffff; // a packet this long goes on in the next one

/// The size of the command or other message at the start of `bytes` with all its packets, none when
/// it is not whole yet.
std::optional<qsizetype> messageSize(const QByteArray& bytes) {
    qsizetype end = 0;
    for (;;) {
        if (bytes.size() < end + HeaderSize) {
            return std::nullopt;
        }
        const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData()) + end;
        const qsizetype body = p[0] | p[1] << 8 | p[2] << 16;
        end += HeaderSize + body;
        if (bytes.size() < end) {
            return std::nullopt;
        }
        if (body < FullPacket) {
            return end;
        }
    }
}

/// The statement that a message carries; null when it carries none. Only commands start at sequence
/// number 0; what a client sends while logging in does not.
QByteArray textOf(const QByteArray& message) {
    if (message.size() <= HeaderSize || message[3] != 0) {
        return {};
    }
    const int command = static_cast<unsigned char>(message[HeaderSize]);
    if (command != ComQuery && command != ComStmtPrepare) {
        return {};
    }
    QByteArray text;
    text.reserve(message.size());
    for (qsizetype start = 0; start < message.size(); start += HeaderSize + FullPacket) {
        text += message.mid(start + HeaderSize, FullPacket);
    }
    return text.mid(1);
}

int commandOf(const QByteArray& message) {
    return message.size() > HeaderSize && message[3] == 0 ? static_cast<unsigned char>(message[HeaderSize])
                                                          : -1;
}

/// A unix socket's path may be short only, whatever the machine's folder for temporary files is called.
QString shortFolder() {
#ifdef _WIN32
    return QDir::tempPath() + QStringLiteral("/tarvessa-XXXXXX");
#else
    return QStringLiteral("/tmp/tarvessa-XXXXXX");
#endif
}

} // namespace

FaultProxy::FaultProxy(const QString& server) : m_server(server), m_folder(shortFolder()) {
    if (!m_folder.isValid()) {
        throw TestError(m_folder.errorString());
    }
    std::tie(m_listener, m_socket) = sockets::listen(m_folder.path());
    std::tie(m_waker, m_woken) = sockets::wakerPair();
    m_thread = std::thread([this] { run(); });
}

FaultProxy::~FaultProxy() {
    m_stopping = true;
    wake();
    m_thread.join();
    sockets::close(m_listener);
    sockets::close(m_waker);
    if (m_woken != m_waker) {
        sockets::close(m_woken);
    }
}

void FaultProxy::startCounting(int k, bool execute) {
    const std::lock_guard lock(m_mutex);
    m_texts.clear();
    m_cutAt = QByteArray();
    m_remaining = k;
    m_execute = execute;
}

void FaultProxy::cutBefore(int k) {
    startCounting(k, false);
}

void FaultProxy::cutAfter(int k) {
    startCounting(k, true);
}

void FaultProxy::onStatement(std::function<void(const QByteArray&)> watcher) {
    const std::lock_guard lock(m_mutex);
    m_watcher = std::move(watcher);
}

void FaultProxy::mark() {
    cutBefore(0);
}

QList<QByteArray> FaultProxy::texts() const {
    const std::lock_guard lock(m_mutex);
    return m_texts;
}

QByteArray FaultProxy::cutAt() const {
    const std::lock_guard lock(m_mutex);
    return m_cutAt;
}

void FaultProxy::wake() {
    // A full pipe already wakes the thread, so the outcome does not matter.
    QByteArray signal(1, '\0');
    sockets::send(m_waker, signal);
}

void FaultProxy::run() {
    std::vector<sockets::Watch> watched;
    while (!m_stopping) {
        watched.clear();
        watched.push_back({m_listener, true, false});
        watched.push_back({m_woken, true, false});
        for (const Pair& pair : m_pairs) {
            // A side whose counterpart lags is not read, so that nothing piles up here.
            watched.push_back(
                {pair.client, pair.toServer.size() < sockets::PendingLimit, !pair.toClient.isEmpty()});
            watched.push_back(
                {pair.server, pair.toClient.size() < sockets::PendingLimit, !pair.toServer.isEmpty()});
        }
        if (!sockets::wait(watched)) {
            continue;
        }
        for (size_t i = 0; i < m_pairs.size(); ++i) {
            Pair& pair = m_pairs[i];
            if (!serve(pair, watched[2 + 2 * i].arrived, watched[3 + 2 * i].arrived)) {
                close(pair);
            }
        }
        std::erase_if(m_pairs, [](const Pair& pair) { return pair.client == sockets::None; });
        if (watched[0].arrived) {
            accept();
        }
    }
    std::for_each(m_pairs.begin(), m_pairs.end(), close);
}

void FaultProxy::accept() {
    const sockets::Handle client = sockets::accept(m_listener);
    if (client == sockets::None) {
        return;
    }
    const sockets::Handle server = sockets::connect(m_server);
    if (server == sockets::None) {
        sockets::close(client);
        return;
    }
    Pair pair;
    pair.client = client;
    pair.server = server;
    m_pairs.push_back(pair);
}

// False when the pair is to be closed: at a cut, or when either side has ended.
bool FaultProxy::serve(Pair& pair, bool fromClient, bool fromServer) {
    bool open = true;
    if (fromServer) {
        open = sockets::receive(pair.server, pair.toClient);
        if (pair.cut == Pair::Cut::AtAnswer) {
            return false;
        }
    }
    if (fromClient) {
        const bool clientOpen = sockets::receive(pair.client, pair.received);
        if (!forwardCommands(pair)) {
            return false;
        }
        open = open && clientOpen;
    }
    const bool wentToServer = sockets::send(pair.server, pair.toServer);
    const bool wentToClient = sockets::send(pair.client, pair.toClient);
    return open && wentToServer && wentToClient;
}

// Whole messages only: nothing of a statement that is to be cut may have gone before.
bool FaultProxy::forwardCommands(Pair& pair) {
    while (const auto size = messageSize(pair.received)) {
        const QByteArray message = pair.received.left(*size);
        pair.received.remove(0, *size);
        if (!letPass(pair, message)) {
            sockets::send(pair.server, pair.toServer);
            return false;
        }
        pair.toServer += message;
    }
    return true;
}

bool FaultProxy::letPass(Pair& pair, const QByteArray& command) {
    if (pair.cut == Pair::Cut::WhenExecuted && commandOf(command) == ComStmtExecute) {
        pair.cut = Pair::Cut::AtAnswer;
    }
    const QByteArray text = textOf(command);
    if (text.isNull()) {
        return true;
    }
    const std::lock_guard lock(m_mutex);
    if (m_remaining > 0 && --m_remaining == 0) {
        m_cutAt = text;
        if (!m_execute) {
            return false;
        }
        pair.cut = commandOf(command) == ComQuery ? Pair::Cut::AtAnswer : Pair::Cut::WhenExecuted;
    }
    m_texts += text;
    if (m_watcher) {
        m_watcher(text);
    }
    return true;
}

void FaultProxy::close(Pair& pair) {
    sockets::close(pair.client);
    sockets::close(pair.server);
    pair.client = sockets::None;
    pair.server = sockets::None;
}

} // namespace tarvessa::test
