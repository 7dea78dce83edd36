#pragma once

// The screens' money, declared with what the host supplies because reports add up amounts too.
#include "platform/Dinheiro.h"
