#pragma once

int Run();
