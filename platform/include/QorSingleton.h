#ifndef QOR_SINGLETON_H
#define QOR_SINGLETON_H

namespace Qor {

// The base of a class with a single object.
//
//   class Registry : public Qor::Singleton<Registry> { ... };
//   Registry::instance().add(...);
//
// The object is created by the first instance() and destroyed when the process
// exits or the library that contains it is unloaded, in reverse order of
// creation. instance() may be called from any thread; if the constructor
// throws, it passes the exception on, and the next call tries again. Access to
// the object is not locked.
template <class T>
class Singleton {
 public:
  static T& instance() {
    static T object;
    return object;
  }

  virtual ~Singleton() = default;
  Singleton(Singleton const&) = delete;
  Singleton& operator=(Singleton const&) = delete;

 protected:
  Singleton() = default;
};

}  // namespace Qor

#endif
