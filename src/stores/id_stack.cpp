#include "stores/id_stack.h"

namespace brindle::stores {

int32_t push_id(std::span<int16_t> ids, int16_t id) noexcept {
    if (id == 0)
        return -1;
    int16_t *free_slot = nullptr;
    for (int16_t &slot : ids) {
        if (slot == id)
            return 0;
        if (slot == 0 && free_slot == nullptr)
            free_slot = &slot;
    }
    if (free_slot == nullptr)
        return -1;
    *free_slot = id;
    return 0;
}

int32_t pop_id(std::span<int16_t> ids, int16_t id) noexcept {
    if (id == 0)
        return -1;
    for (int16_t &slot : ids)
        if (slot == id) {
            slot = 0;
            return 0;
        }
    return -1;
}

int32_t pop_last_id(std::span<int16_t> ids) noexcept {
    for (size_t i = ids.size(); i-- > 0;)
        if (ids[i] != 0) {
            ids[i] = 0;
            return 0;
        }
    return -1;
}

int32_t clear_ids(std::span<int16_t> ids) noexcept {
    if (ids.empty())
        return -1;
    for (int16_t &slot : ids)
        slot = 0;
    return 0;
}

int16_t id_at(std::span<const int16_t> ids, int32_t n) noexcept {
    if (n < 0 || static_cast<size_t>(n) >= ids.size())
        return 0;
    return ids[static_cast<size_t>(n)];
}

} // namespace brindle::stores
