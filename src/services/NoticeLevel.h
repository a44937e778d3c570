#pragma once

/// How much something that the program says to its user weighs; a larger value is graver.
enum class NoticeLevel { Info, Warning, Danger };
