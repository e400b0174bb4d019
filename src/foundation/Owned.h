// `Owned<T>`: ownership of an object whose type is only declared here. Whoever makes the object
// fixes how it is destroyed, so that a low floor can hold what a higher floor defines.
#pragma once

#include <memory>
#include <utility>

namespace corvane {

template <class T>
struct FixedDeleter {
    void (*destroy)(T*) = nullptr;

    void operator()(T* object) const { destroy(object); }
};

template <class T>
using Owned = std::unique_ptr<T, FixedDeleter<T>>;

// Makes a `T` and fixes its deletion here, where `T` is complete.
template <class T, class... Arguments>
Owned<T> makeOwned(Arguments&&... arguments) {
    return {new T(std::forward<Arguments>(arguments)...),
            FixedDeleter<T>{[](T* object) { delete object; }}};
}

// The same, held by its base `Base`, whose destructor only the makers of its kind know how to
// reach.
template <class Base, class T, class... Arguments>
Owned<Base> makeOwnedAs(Arguments&&... arguments) {
    return {new T(std::forward<Arguments>(arguments)...),
            FixedDeleter<Base>{[](Base* object) { delete static_cast<T*>(object); }}};
}

}  // namespace corvane
