#ifndef NYXMLKIT_TESTS_PLANTMODEL_H
#define NYXMLKIT_TESTS_PLANTMODEL_H

// A model of 25 classes, as an application writes it: how much there is to write, and how long it takes to compile.

#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlEnum.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlPolymorphic.h>
#include <nyXmlKit/model/NyXmlRepeated.h>

namespace plant {

using Text = NyXmlBasicType<std::string>;
using Whole = NyXmlBasicType<int>;
using Real = NyXmlBasicType<double>;

enum class JointKind { turning, sliding };
constexpr auto nyXmlWords(JointKind)
{
    return nyXmlTable<JointKind>({ { JointKind::turning, "turning" }, { JointKind::sliding, "sliding" } });
}

struct Address : NyXmlModel<Address> {
    static constexpr auto xmlName = "urn:demo/plant#address";
    void registerComponents() override { elements("street", street, "city", city); }
    Text street, city;
};
struct Person : NyXmlModel<Person> {
    static constexpr auto xmlName = "urn:demo/plant#person";
    void registerComponents() override { attributes("name", name), elements("address", address); }
    Text name;
    NyXmlOptional<Address> address;
};
struct Company : NyXmlModel<Company> {
    static constexpr auto xmlName = "urn:demo/plant#company";
    void registerComponents() override { attributes("name", name), elements("contacts", contacts); }
    Text name;
    NyXmlRepeated<Person> contacts;
};
struct Position : NyXmlModel<Position> {
    static constexpr auto xmlName = "urn:demo/plant#position";
    void registerComponents() override { attributes("x", x, "y", y, "z", z); }
    Real x, y, z;
};
struct Limits : NyXmlModel<Limits> {
    static constexpr auto xmlName = "urn:demo/plant#limits";
    void registerComponents() override { attributes("lower", lower, "upper", upper); }
    Real lower, upper;
};
struct Motor : NyXmlModel<Motor> {
    static constexpr auto xmlName = "urn:demo/plant#motor";
    void registerComponents() override { elements("power", power, "gear", gear); }
    Real power, gear;
};
struct Joint : NyXmlModel<Joint> {
    static constexpr auto xmlName = "urn:demo/plant#joint";
    void registerComponents() override { attributes("kind", kind), elements("limits", limits, "motor", motor); }
    NyXmlEnum<JointKind> kind;
    Limits limits;
    Motor motor;
};
struct Link : NyXmlModel<Link> {
    static constexpr auto xmlName = "urn:demo/plant#link";
    void registerComponents() override { elements("centre", centre); }
    Position centre;
};
struct Device : NyXmlModel<Device> {
    static constexpr auto xmlName = "urn:demo/plant#device";
    void registerComponents() override { attributes("id", id), elements("place", place); }
    Whole id;
    Position place;
};
struct Robot : NyXmlModel<Robot, Device> {
    static constexpr auto xmlName = "urn:demo/plant#robot";
    void registerComponents() override { elements("joints", joints, "links", links); }
    NyXmlRepeated<Joint> joints;
    NyXmlRepeated<Link> links;
};
struct Gripper : NyXmlModel<Gripper, Device> {
    static constexpr auto xmlName = "urn:demo/plant#gripper";
    void registerComponents() override { elements("opening", opening); }
    Limits opening;
};
struct Camera : NyXmlModel<Camera, Device> {
    static constexpr auto xmlName = "urn:demo/plant#camera";
    void registerComponents() override { attributes("width", width, "height", height); }
    Whole width, height;
};
struct Belt : NyXmlModel<Belt, Device> {
    static constexpr auto xmlName = "urn:demo/plant#belt";
    void registerComponents() override { elements("running", running); }
    NyXmlBoolean running;
};
struct Task : NyXmlModel<Task> {
    static constexpr auto xmlName = "urn:demo/plant#task";
    void registerComponents() override { elements("timeout", timeout); }
    NyXmlOptional<double> timeout;
};
struct Move : NyXmlModel<Move, Task> {
    static constexpr auto xmlName = "urn:demo/plant#move";
    void registerComponents() override { elements("target", target); }
    Position target;
};
struct Wait : NyXmlModel<Wait, Task> {
    static constexpr auto xmlName = "urn:demo/plant#wait";
    void registerComponents() override { elements("seconds", seconds); }
    Real seconds;
};
struct Weld : NyXmlModel<Weld, Task> {
    static constexpr auto xmlName = "urn:demo/plant#weld";
    void registerComponents() override { elements("spots", spots); }
    NyXmlRepeated<Position> spots;
};
struct Inspect : NyXmlModel<Inspect, Task> {
    static constexpr auto xmlName = "urn:demo/plant#inspect";
    void registerComponents() override { elements("passed", passed); }
    NyXmlBoolean passed;
};
struct Program : NyXmlModel<Program> {
    static constexpr auto xmlName = "urn:demo/plant#program";
    void registerComponents() override { elements("tasks", tasks); }
    NyXmlManyOf<Task, Move, Wait, Weld, Inspect> tasks;
};
struct Shift : NyXmlModel<Shift> {
    static constexpr auto xmlName = "urn:demo/plant#shift";
    void registerComponents() override { elements("begin", begin, "end", end); }
    NyXmlDateTime begin, end;
};
struct Part : NyXmlModel<Part> {
    static constexpr auto xmlName = "urn:demo/plant#part";
    void registerComponents() override { attributes("number", number), elements("supplier", supplier); }
    NyXmlLong number;
    NyXmlOptional<Company> supplier;
};
struct Order : NyXmlModel<Order> {
    static constexpr auto xmlName = "urn:demo/plant#order";
    void registerComponents() override { elements("due", due, "parts", parts); }
    NyXmlDate due;
    NyXmlRepeated<Part> parts;
};
struct Alarm : NyXmlModel<Alarm> {
    static constexpr auto xmlName = "urn:demo/plant#alarm";
    void registerComponents() override { elements("time", time); }
    NyXmlDateTime time;
};
struct Cell : NyXmlModel<Cell> {
    static constexpr auto xmlName = "urn:demo/plant#cell";
    void registerComponents() override { elements("devices", devices, "programs", programs, "alarms", alarms); }
    NyXmlManyOf<Device, Robot, Gripper, Camera, Belt> devices;
    NyXmlRepeated<Program> programs;
    NyXmlRepeated<Alarm> alarms;
};
struct Plant : NyXmlModel<Plant> {
    static constexpr auto xmlName = "urn:demo/plant#plant";
    void registerComponents() override { elements("owner", owner, "cells", cells, "shifts", shifts, "orders", orders); }
    Company owner;
    NyXmlRepeated<Cell> cells;
    NyXmlRepeated<Shift> shifts;
    NyXmlRepeated<Order> orders;
};

} // namespace plant

#endif
