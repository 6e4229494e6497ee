// A document of the 25 classes, there and back, with defaults and without; what compiles here is what an application writes.

#include "ModelSupport.h"
#include "PlantModel.h"

namespace {

plant::Plant makePlant()
{
    plant::Plant plant;
    plant.owner.contacts.append().address.make().city = "x";
    plant::Cell& cell = plant.cells.append();
    auto& robot = cell.devices.append<plant::Robot>();
    robot.id = 3;
    robot.joints.append().kind = plant::JointKind::sliding;
    robot.joints[0].motor.gear = 0.1;
    cell.devices.append<plant::Belt>().running = true;
    auto& weld = cell.programs.append().tasks.append<plant::Weld>();
    weld.timeout = 2;
    weld.spots.append().x = 7;
    weld.spots.append();
    cell.programs[0].tasks.append<plant::Wait>().seconds = 1;
    plant.orders.append().due = NyXmlDateValue(2026, 11, 21);
    plant.orders[0].parts.append().number = 1LL << 40;
    plant.orders[0].parts[0].supplier.make().contacts.append().address.make();
    return plant;
}

TEST(Plant, ReadsBackWhatItWrites)
{
    Messages messages;
    plant::Plant const plant = makePlant();
    for (bool const withDefaults : { true, false }) {
        plant::Plant back;
        std::string const document = writtenValue(plant, withDefaults);
        EXPECT_TRUE(readValue(back, document));
        EXPECT_TRUE(back == plant) << document;
        EXPECT_EQ(writtenValue(back, withDefaults), document);
        EXPECT_TRUE(copyOf(back) == plant);
        back.orders[0].parts[0].supplier->contacts[0].address->city = "y"; // deep inside
        EXPECT_FALSE(back == plant);
    }
    EXPECT_EQ(messages.text(), "");
}

} // namespace
