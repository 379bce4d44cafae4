#ifndef QOR_SINGLETON_H
#define QOR_SINGLETON_H

namespace Qor {

// The base of a class of which a process has one object.
//
//   class Registry : public Qor::Singleton<Registry> { ... };
//   Registry::instance().add(...);
//
// The object is created by the first instance() and destroyed when the process
// ends or the library that holds it is unloaded, in reverse order of creation.
// Creation is safe from any thread and happens once; when the constructor
// throws, instance() passes the exception on and the next call tries again.
// The base adds no lock for what happens to the object afterwards.
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
