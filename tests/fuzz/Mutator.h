#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

namespace tarvessa::test {

/// Makes inputs by chance; the same seed makes the same ones.
class Mutator {
  public:
    explicit Mutator(quint32 seed) : m_chance(seed) {}

    /// True once in `times`.
    bool once(int times) { return m_chance.bounded(times) == 0; }

    /// From 0 to `end` - 1.
    int below(int end) { return m_chance.bounded(end); }

    template <typename List>
    auto oneOf(const List& list) {
        return list[below(static_cast<int>(list.size()))];
    }

    /// A copy with some bytes or stretches changed, removed, doubled, moved, or replaced by a stretch of
    /// `other`.
    QByteArray damaged(QByteArray bytes, const QByteArray& other);

    /// A copy of an XML text with some attribute values and texts replaced by others that such files have.
    QByteArray varied(const QByteArray& xml);

    /// A text of up to `longest` characters: letters with and without accents, digits, signs that mean
    /// something to SQL, XML, CSV or a mask, and rarely any character at all.
    QString text(int longest);

    /// A number in point form with up to 20 digits and 6 decimals.
    QString number();

  private:
    QRandomGenerator m_chance;
};

} // namespace tarvessa::test
