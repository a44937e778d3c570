#pragma once

/// How much the demo records: fourteen months, or the last three of them for a quick check.
enum class DemoSize { Full, Short };
