// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <variant>

namespace vellumo {

/// A value or an error.
template <typename T, typename E> class Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) { }
    Result(E error) : state_(std::in_place_index<1>, std::move(error)) { }

    [[nodiscard]] bool isOk() const { return state_.index() == 0; }
    [[nodiscard]] const T &value() const { return std::get<0>(state_); }
    [[nodiscard]] const E &error() const { return std::get<1>(state_); }

private:
    std::variant<T, E> state_;
};

} // namespace vellumo
