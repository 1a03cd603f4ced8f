// Simulates a drive and writes it as the recording that drive.toml is about: a folder with three
// files that have clocks of their own.
//
//   simulate_drive FOLDER
//
// A car speeds up, hands over to its cruise control, which overshoots, brakes behind a slower
// vehicle, resumes and stops. Twice something is wrong with the car: the brake lamp is late at the
// last stop, and the radar is silent for three seconds.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>

namespace {

constexpr double step = 0.02;       // s
constexpr int steps = 6000;         // two minutes
constexpr double gearRatio = 110;   // engine revolutions per minute for each m/s in third gear
constexpr double cruiseSpeed = 25;  // m/s

enum class Cruise { Off, Standby, Active };

const char* nameOf(Cruise mode) {
    switch (mode) {
        case Cruise::Off:
            return "off";
        case Cruise::Standby:
            return "standby";
        case Cruise::Active:
            break;
    }
    return "active";
}

struct Car {
    double speed = 0;
    double acceleration = 0;
    double integral = 0;  // of the cruise control's error
    double brake = 0;     // bar
    bool lamp = false;
    Cruise cruise = Cruise::Off;
    double ahead = 40;  // distance to the vehicle in front, m
};

double brakeAt(double time) {
    const bool firstStop = time >= 60 && time < 63.5;
    const bool lastStop = time >= 100 && time < 108;
    return firstStop ? 42 : lastStop ? 30 : 0;
}

Cruise cruiseAt(double time) {
    const bool active = (time >= 14 && time < 60.3) || (time >= 72 && time < 100.3);
    return active ? Cruise::Active : time < 14 ? Cruise::Off : Cruise::Standby;
}

bool lampAt(double time) {
    return (time >= 60.06 && time < 63.6) || (time >= 100.18 && time < 108.1);
}

double pull(Car& car, double time) {
    if (car.brake > 0) {
        car.integral = 0;
        return -0.14 * car.brake;
    }
    if (car.cruise == Cruise::Active) {
        const double error = cruiseSpeed - car.speed;
        car.integral += std::fabs(error) < 4 ? error * step : 0;
        return std::clamp(0.45 * error + 0.09 * car.integral, -1.5, 2.2);
    }
    return time < 14 ? 1.5 : 0;
}

void advance(Car& car, double time) {
    car.brake = brakeAt(time);
    car.cruise = cruiseAt(time);
    car.lamp = lampAt(time);
    car.acceleration = pull(car, time);
    if (car.speed + car.acceleration * step < 0) {
        car.acceleration = -car.speed / step;
    }
    car.speed += car.acceleration * step;
    const double leader = time < 50 ? 22 : time < 66 ? 19 : time < 80 ? 14 : 24;
    car.ahead = std::max(4.0, car.ahead + (leader - car.speed) * step);
}

class Drive {
public:
    explicit Drive(const std::filesystem::path& folder)
        : vehicle_(folder / "vehicle.csv"),
          driver_(folder / "driver.csv"),
          radar_(folder / "radar.csv") {
        vehicle_ << "time [s],speed [m/s],acceleration [m/s^2],engine_speed [1/min],gear\n";
        driver_ << "time [s];brake [bar];brake_lamp;cruise_mode;set_speed [m/s]\n";
        radar_ << "t_ms,distance [m],closing_speed [m/s],track\n";
    }

    bool write() {
        Car car;
        for (int i = 0; i < steps; ++i) {
            const Car before = car;
            advance(car, i * step);
            writeVehicle(i, car);
            if (i == 0 || changed(before, car)) {
                writeDriver(i, car);
            }
            if (i % 5 == 0) {
                writeRadar(i, car);
            }
        }
        writeDriver(steps, car);
        vehicle_.flush();
        driver_.flush();
        radar_.flush();
        return vehicle_ && driver_ && radar_;
    }

private:
    static bool changed(const Car& a, const Car& b) {
        return a.brake != b.brake || a.lamp != b.lamp || a.cruise != b.cruise;
    }

    // Between -1 and 1. The distributions of the standard library differ between systems.
    double noise() { return static_cast<double>(random_() % 2001) / 1000 - 1; }

    void writeVehicle(int i, const Car& car) {
        const int gear = car.speed < 0.5 ? 0 : car.speed < 6 ? 1 : car.speed < 13 ? 2 : 3;
        const double revolutions = 800 + gearRatio * car.speed * (gear == 0 ? 0 : 3.0 / gear);
        vehicle_ << i * step << ',' << std::max(0.0, car.speed + 0.02 * noise()) << ','
                 << car.acceleration << ',' << std::lround(revolutions) << ',' << gear << '\n';
    }

    void writeDriver(int i, const Car& car) {
        driver_ << i * step << ';' << car.brake << ';' << (car.lamp ? "true" : "false") << ';'
                << nameOf(car.cruise) << ';' << cruiseSpeed << '\n';
    }

    // Milliseconds as an integer; a target out of reach is an empty cell.
    void writeRadar(int i, const Car& car) {
        const double time = i * step;
        if (time > 84 && time < 87) {
            return;
        }
        radar_ << i * 20 << ',';
        if (car.ahead < 200) {
            radar_ << car.ahead + 0.1 * noise() << ',' << car.speed - 22 << ",7\n";
        } else {
            radar_ << ",,\n";
        }
    }

    std::mt19937 random_{20};
    std::ofstream vehicle_;
    std::ofstream driver_;
    std::ofstream radar_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: simulate_drive FOLDER\n";
        return 2;
    }
    std::error_code error;
    std::filesystem::create_directories(argv[1], error);
    if (error || !Drive(argv[1]).write()) {
        std::cerr << "simulate_drive: cannot write to '" << argv[1] << "'\n";
        return 3;
    }
    return 0;
}
