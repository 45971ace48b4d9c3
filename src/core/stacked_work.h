#pragma once

#include <utility>

#include "platform/dialogs/dialogs.h"

namespace velk {

/// Work that waits on the stack, begun from timers. A piece on which a box came to stand can't go on until the box was
/// answered, for hours perhaps; then a later piece may be begun on top of it and do its work.
class StackedWork {
 public:
  explicit StackedWork(const Dialogs& dialogs) : dialogs_(dialogs) {}

  /// The latest piece goes on by itself: no box stands on it, or one that was answered already.
  bool IsUnderWay() const {
    const bool liesBelowABox = dialogs_.Standing() > boxesBelow_;
    return depth_ > 0 && (!liesBelowABox || dialogs_.TopIsAnswered());
  }
  /// How many pieces are on the stack.
  int Depth() const { return depth_; }

  /// A piece, for as long as it is on the stack.
  class Piece {
   public:
    explicit Piece(StackedWork& work)
        : work_(work), boxesBelow_(std::exchange(work.boxesBelow_, work.dialogs_.Standing())) {
      ++work_.depth_;
    }
    ~Piece() {
      --work_.depth_;
      work_.boxesBelow_ = boxesBelow_;
    }
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;

   private:
    StackedWork& work_;
    int boxesBelow_;
  };

 private:
  const Dialogs& dialogs_;
  int depth_ = 0;
  int boxesBelow_ = 0;  ///< boxes that stood when the latest piece began
};

}  // namespace velk
