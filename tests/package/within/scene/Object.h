#pragma once

struct Object {
    int Age = 0;
};
