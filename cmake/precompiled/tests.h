// What many tests include.
#pragma once

#include "windows.h"

#include <fstream>
#include <regex>
#include <sstream>

#include <QTest>

#include <gtest/gtest.h>
