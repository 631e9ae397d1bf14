#include "mendo/observer.h"

namespace mendo {

Observer* Observer::current_ = nullptr;

Observer::~Observer() {
    if (current_ == this) {
        current_ = nullptr;
    }
}

}  // namespace mendo
