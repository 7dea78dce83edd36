#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace tarvessa::bench {

/// A screen that stands ready for what is measured on it, with the program's connection open.
class Stage {
  public:
    Stage() = default;
    virtual ~Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// The operation, from the operator's press to the painted result. Raises std::runtime_error when it did
    /// not do its work.
    virtual void run() = 0;
};

/// An operation of a screen that sends statements, at any size.
struct Screen {
    QString what; ///< with %1 for the size
    std::function<void(int size)> load;
    std::function<std::unique_ptr<Stage>(int size)> open;

    int linkSize = 0;         ///< over a link
    int linkRuns = 1;         ///< how often in a row there, where one run sends a single statement
    bool changesData = false; ///< has to be loaded again before each run
    bool connects = false;    ///< opens a connection of its own on the way

    QList<int> growth = {}; ///< the sizes at which its growth is measured; none when it is not
};

} // namespace tarvessa::bench
