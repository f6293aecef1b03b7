#include "BatchRunner.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

namespace {

ImageOutcome DecodeGuarded(DecodeLane& lane, const ImageInput& input) {
    try {
        return lane.Decode(input);
    } catch (const std::exception& e) { // the foundation's exceptions included
        ImageOutcome outcome;
        outcome.input = input;
        outcome.error = e.what();
        return outcome;
    }
}

} // namespace

void BatchRunner::Run(const std::vector<DecodeLane*>& lanes, const std::vector<ImageInput>& inputs,
                      const Sink& sink) {
    if (lanes.empty()) {
        return;
    }
    std::vector<std::optional<ImageOutcome>> done(inputs.size());
    std::mutex mutex;
    std::condition_variable ready;
    std::atomic<size_t> next{0};

    std::vector<std::thread> threads;
    threads.reserve(lanes.size());
    for (DecodeLane* lane : lanes) {
        threads.emplace_back([&, lane] {
            for (size_t i = next++; i < inputs.size(); i = next++) {
                ImageOutcome outcome = DecodeGuarded(*lane, inputs[i]);
                {
                    std::lock_guard<std::mutex> lock(mutex);
                    done[i] = std::move(outcome);
                }
                ready.notify_all();
            }
        });
    }
    for (size_t i = 0; i < inputs.size(); ++i) {
        ImageOutcome outcome;
        {
            std::unique_lock<std::mutex> lock(mutex);
            ready.wait(lock, [&] { return done[i].has_value(); });
            outcome = std::move(*done[i]);
            done[i].reset();
        }
        sink(std::move(outcome));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}
