# A technician starts the program for the first time. Nothing is on disk but the settings that name the port.
$ mkdir -p Quorin && printf '[Settings]\nComPort=Com1\n' > settings.ini && ls -A
Quorin
settings.ini
$ quorin-console --strict
> show
                                         Velmor
                                        Tallybook
    
                                         V 0.27
    --------------------------------------------------------------------------------
    [Main] Start... | Exit
                       [Options] Preferences... | inf editor... | Bluetooth Debug...
{"done":"show"}
# The list of drivers creates the drivers table and the register.
> choose Start...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Drivers
    --------------------------------------------------------------------------------
    --------------------------------------------------------------------------------
    [Ok]                                                                      [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
> choose inf editor...
{"done":"choose"}
# A new driver gets a name and the file of its inf table.
> choose New
{"done":"choose"}
> tap 0 1
{"done":"tap"}
> set Moisture Meter
{"done":"set"}
> tap 1 1
{"done":"tap"}
> set moisture.txt
{"done":"set"}
> tick 100
{"done":"tick"}
> show
      Edit Driver
    --------------------------------------------------------------------------------
      NAME                                   Moisture Meter
    > INFFILE                                moisture.txt
    --------------------------------------------------------------------------------
    [Save]                                                                    [Back]
{"done":"show"}
# Save goes on to the driver's inf table, which begins with one blank row.
> choose Save
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Inf Editor                             1/1
    --------------------------------------------------------------------------------
    > FIELDNAME
      VISIBLE
      COPY
      BLOB
      DISPLAY
      CSVNAME
      DATATYPE
      FORMULA
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> tap 0 1
{"done":"tap"}
> set Date
{"done":"set"}
> tap 1 1
{"done":"tap"}
> set 1
{"done":"set"}
> tap 7 1
{"done":"tap"}
> set enddate
{"done":"set"}
> choose New Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tap 0 1
{"done":"tap"}
> set Moisture
{"done":"set"}
> tap 1 1
{"done":"tap"}
> set 1
{"done":"set"}
> tap 3 1
{"done":"tap"}
> set Moisture
{"done":"set"}
> choose New Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tap 0 1
{"done":"tap"}
> set Place
{"done":"set"}
> tap 1 1
{"done":"tap"}
> set 1
{"done":"set"}
> tap 2 1
{"done":"tap"}
> set 1
{"done":"set"}
> tap 3 1
{"done":"tap"}
> set dv: Site
{"done":"set"}
> tick 100
{"done":"tick"}
> show
      Inf Editor                             3/3
    --------------------------------------------------------------------------------
      FIELDNAME                              Place
      VISIBLE                                1
      COPY                                   1
    > BLOB                                   dv: Site
      DISPLAY
      CSVNAME
      DATATYPE
      FORMULA
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose First Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Inf Editor                             1/3
    --------------------------------------------------------------------------------
      FIELDNAME                              Date
      VISIBLE                                1
      COPY
    > BLOB
      DISPLAY
      CSVNAME
      DATATYPE
      FORMULA                                enddate
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Installed Drivers
    --------------------------------------------------------------------------------
    > Moisture Meter
    --------------------------------------------------------------------------------
    [File] Edit | Delete | Show/Hide Columns... | New | Add Driver...         [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
> choose Exit
{"event":"end"}
{"done":"choose"}
$ ls Quorin
drivers.txt
moisture.txt
qrnctrl.txt
$ cat Quorin/drivers.txt
NAME|INFFILE
Moisture Meter|moisture.txt
$ cat Quorin/qrnctrl.txt
DRIVER|FILE|DATE|ALIAS
$ cat Quorin/moisture.txt
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
Date|1||||||enddate
Moisture|1||Moisture||||
Place|1|1|dv: Site||||
