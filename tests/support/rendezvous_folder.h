#pragma once

#include "tests/support/rendezvous.h"
