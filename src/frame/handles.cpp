#include "frame/handles.h"

#include <mutex>
#include <random>
#include <vector>

namespace brindle::frame {

namespace {

// A number is (generation << 16) | (slot + 1): the slot in the low 16 bits
// (1..65535, so never 0), a 15-bit generation above it (1..32767, so the
// number stays positive and is never -1).
constexpr uint32_t kSlotBits = 16;
constexpr uint32_t kGenerationMask = 0x7FFF;

struct Entry {
    std::shared_ptr<HandleObject> object; // null while the slot is free
    HandleKind kind{};
    uint32_t generation = 0;
};

class Table {
  public:
    int32_t add(HandleKind kind, std::shared_ptr<HandleObject> object) {
        if (!object)
            return 0;
        std::lock_guard<std::mutex> lock(mutex_);
        size_t slot;
        if (!free_.empty()) {
            slot = free_.back();
            free_.pop_back();
        } else if (entries_.size() < static_cast<size_t>(kMaxHandles)) {
            slot = entries_.size();
            entries_.push_back(Entry{nullptr, kind, first_generation()});
        } else {
            return 0;
        }
        Entry &e = entries_[slot];
        e.object = std::move(object);
        e.kind = kind;
        ++open_;
        return static_cast<int32_t>((e.generation << kSlotBits) | static_cast<uint32_t>(slot + 1));
    }

    std::shared_ptr<HandleObject> find(HandleKind kind, int32_t number) {
        std::lock_guard<std::mutex> lock(mutex_);
        Entry *e = entry(kind, number);
        return e ? e->object : nullptr;
    }

    std::shared_ptr<HandleObject> remove(HandleKind kind, int32_t number) {
        std::lock_guard<std::mutex> lock(mutex_);
        Entry *e = entry(kind, number);
        if (!e)
            return nullptr;
        std::shared_ptr<HandleObject> object = std::move(e->object);
        e->object = nullptr;
        // The next object in this slot gets another number.
        e->generation = (e->generation & kGenerationMask) == kGenerationMask ? 1 : e->generation + 1;
        free_.push_back(static_cast<size_t>(e - entries_.data()));
        --open_;
        return object;
    }

    bool any(HandleKind kind, const std::function<bool(const HandleObject &)> &test) {
        std::lock_guard<std::mutex> lock(mutex_);
        for (const Entry &e : entries_)
            if (e.object && e.kind == kind && test(*e.object))
                return true;
        return false;
    }

    int32_t open() {
        std::lock_guard<std::mutex> lock(mutex_);
        return open_;
    }

  private:
    Entry *entry(HandleKind kind, int32_t number) {
        if (number <= 0)
            return nullptr;
        const auto n = static_cast<uint32_t>(number);
        const uint32_t slot = n & ((1u << kSlotBits) - 1);
        if (slot == 0 || slot > entries_.size())
            return nullptr;
        Entry &e = entries_[slot - 1];
        if (!e.object || e.kind != kind || e.generation != (n >> kSlotBits))
            return nullptr;
        return &e;
    }

    // Each process starts its slots at generations of its own, so a number
    // copied from another process is most likely refused rather than taken
    // for one of ours.
    uint32_t first_generation() {
        if (!seeded_) {
            std::random_device device;
            random_.seed(device());
            seeded_ = true;
        }
        return static_cast<uint32_t>(random_() % kGenerationMask) + 1;
    }

    std::mutex mutex_;
    std::vector<Entry> entries_;
    std::vector<size_t> free_;
    int32_t open_ = 0;
    std::minstd_rand random_;
    bool seeded_ = false;
};

Table &table() {
    static Table instance;
    return instance;
}

} // namespace

int32_t handle_add(HandleKind kind, std::shared_ptr<HandleObject> object) {
    return table().add(kind, std::move(object));
}

std::shared_ptr<HandleObject> handle_find(HandleKind kind, int32_t number) { return table().find(kind, number); }

std::shared_ptr<HandleObject> handle_remove(HandleKind kind, int32_t number) { return table().remove(kind, number); }

bool handle_any(HandleKind kind, const std::function<bool(const HandleObject &)> &test) {
    return table().any(kind, test);
}

int32_t handles_open() noexcept {
    try {
        return table().open();
    } catch (...) {
        return 0;
    }
}

} // namespace brindle::frame
