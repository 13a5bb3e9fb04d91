// The caller's records of the attribute and time exports: eight 16-bit
// Integers each, 2-byte aligned, so the 32-bit and the 64-bit layouts are
// one and the same.
#pragma once

#include <cstddef>
#include <cstdint>

struct FileAttributes {
    int16_t Status;
    int16_t Archive;
    int16_t Hidden;
    int16_t Normal;
    int16_t ReadOnly;
    int16_t Directory;
    int16_t System;
    int16_t Compressed;
};
static_assert(offsetof(FileAttributes, Status) == 0);
static_assert(offsetof(FileAttributes, Archive) == 2);
static_assert(offsetof(FileAttributes, Hidden) == 4);
static_assert(offsetof(FileAttributes, Normal) == 6);
static_assert(offsetof(FileAttributes, ReadOnly) == 8);
static_assert(offsetof(FileAttributes, Directory) == 10);
static_assert(offsetof(FileAttributes, System) == 12);
static_assert(offsetof(FileAttributes, Compressed) == 14);
static_assert(sizeof(FileAttributes) == 16 && alignof(FileAttributes) == 2);

struct FileTimeParts {
    int16_t Year;
    int16_t Month;
    int16_t DayOfWeek;
    int16_t Day;
    int16_t Hour;
    int16_t Minute;
    int16_t Second;
    int16_t Milliseconds;
};
static_assert(offsetof(FileTimeParts, Year) == 0);
static_assert(offsetof(FileTimeParts, Month) == 2);
static_assert(offsetof(FileTimeParts, DayOfWeek) == 4);
static_assert(offsetof(FileTimeParts, Day) == 6);
static_assert(offsetof(FileTimeParts, Hour) == 8);
static_assert(offsetof(FileTimeParts, Minute) == 10);
static_assert(offsetof(FileTimeParts, Second) == 12);
static_assert(offsetof(FileTimeParts, Milliseconds) == 14);
static_assert(sizeof(FileTimeParts) == 16 && alignof(FileTimeParts) == 2);
