#pragma once

#include "plain/plain_records.h"
