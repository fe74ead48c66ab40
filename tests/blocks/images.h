// A disk image as the system finds it after a power failure: mounted on a snapshot, so that neither
// the mount nor the start of the log changes the image itself.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "tests/blocks/device_mapper.h"
#include "tests/blocks/file_systems.h"
#include "tests/blocks/image_judge.h"

namespace block_test {

extern const std::string logPath; // of the event log, on the mounted file system

// Marks in the block log `logged` that the file system is there, with nothing of its mount to come.
void markMounted(MappedDevice &logged);
void markMoment(MappedDevice &logged, std::size_t moment); // it is acknowledged

// Judges the log on the replay disk as it is.
Judgement judgeReplayDisk(const FileSystem &system, const store_model::Settings &settings,
                          std::span<const Moment> possible);

// Counts of images.
struct Outcome {
    std::size_t images = 0;
    std::size_t held = 0;
    std::size_t mixed = 0;
    std::size_t creation = 0; // apart: while the log's file was being made,
    std::size_t refused = 0;  // and of these the start was refused
    std::size_t failed = 0;
};

// Makes the file system on the data disk, and the replay disk the same.
void makeDisks(const FileSystem &system);

// Replays the block log and judges every image from markMounted on. `possible` says what an image
// may be when the moments up to a number, from 1 on, were acknowledged; 0: none was, the
// file is being made. All of `moments` must be marked. Prints a line for each image that fails.
Outcome judgeAllImages(const FileSystem &system, const store_model::Settings &settings,
                       std::size_t moments,
                       const std::function<std::span<const Moment>(std::size_t)> &possible);

} // namespace block_test
