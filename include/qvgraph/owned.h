// Owned: what stands behind a public class, made and destroyed with it. Lighter to include than <memory>.
#pragma once

namespace qv {

/// Owns one object for its whole life; where the owner is constant, so is the object. The type may be
/// incomplete where nothing is made or destroyed.
template <class T>
class Owned {
public:
    /// Takes over an object made with `new`.
    explicit Owned(T* object) : object_(object) {}
    ~Owned() { delete object_; }
    Owned(Owned const&) = delete;
    Owned& operator=(Owned const&) = delete;

    T& operator*() { return *object_; }             ///< the object
    T const& operator*() const { return *object_; } ///< the object
    T* operator->() { return object_; }             ///< a member of it
    T const* operator->() const { return object_; } ///< a member of it

private:
    T* object_;
};

} // namespace qv
