// SPDX-License-Identifier: Apache-2.0
#include "bridge/JException.h"

JException::JException(const std::string& first, const std::string& second,
                       const std::string& third)
    : _first(first), _second(second), _third(third) {}

JException::JException(const JException& other) = default;

JException::~JException() = default;
