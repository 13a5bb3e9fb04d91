// The handle table: the objects a client keeps open between calls (disk-array
// files, memory blocks, streams, sockets, ...) named by small numbers that fit
// the 32-bit Long a VB record or variable holds on every build, where a native
// handle or a pointer would not (64-bit builds).
//
// A number is only ever looked up, never dereferenced: a stale number (its
// object closed), a foreign one (a record copied from another process, whose
// table numbered differently) or a random one finds nothing, and the family
// gives its failure value. Every entry knows its kind, so a disk-array number
// passed where a memory block is expected finds nothing either.
//
// Numbers are positive and never 0 or -1 (the "nothing open" values of the
// records). A number carries its slot and that slot's generation, which moves
// on each time the slot is reused and starts at a value of its own in every
// process, so an old or foreign number is not taken for a new object.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace brindle::frame {

enum class HandleKind : uint8_t {
    DiskArray = 1,
    MultiArray,
    HugeArray,
    HugeString,
    Stream,
    Socket,
    Process,
};

// Anything the table holds; a family derives its open object from it.
class HandleObject {
  public:
    virtual ~HandleObject() = default;
};

// The most objects open at once (all kinds together).
inline constexpr int32_t kMaxHandles = 65535;

// Registers `object` and gives its number; 0 when the table is full.
int32_t handle_add(HandleKind kind, std::shared_ptr<HandleObject> object);

// The object `number` names when it is open and of `kind`; null otherwise.
// The object stays alive while the caller holds the pointer, even when
// another thread removes it from the table meanwhile.
std::shared_ptr<HandleObject> handle_find(HandleKind kind, int32_t number);

// Takes the object out of the table and gives it (null when `number` names
// nothing open of `kind`); the number is stale from then on.
std::shared_ptr<HandleObject> handle_remove(HandleKind kind, int32_t number);

// handle_find for a family that registers only objects of type T under `kind`.
template <class T> std::shared_ptr<T> handle_get(HandleKind kind, int32_t number) {
    return std::static_pointer_cast<T>(handle_find(kind, number));
}

// True when `test` holds for an open object of `kind` (the table is locked
// meanwhile: `test` must not call back into it).
bool handle_any(HandleKind kind, const std::function<bool(const HandleObject &)> &test);

// How many objects are open (for the tests' leak checks).
int32_t handles_open() noexcept;

} // namespace brindle::frame
