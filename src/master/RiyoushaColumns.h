#pragma once

// The columns of the patient table RIYOUSHA as (kind, column): one list drives the loader's plain
// structure, its reading order, and the properties and statements of the patient record class.

// The columns the patient loader reads, in its reading order.
#define QELPRN_RIYOUSHA_LOADER_COLUMNS(X)                                                                    \
    /* Identity */                                                                                           \
    X(Int, nIDNo)                                                                                            \
    X(Text, cName)                                                                                           \
    X(Text, cNameRyaku)                                                                                      \
    X(Text, cNameKana)                                                                                       \
    X(Int, iSex)                                                                                             \
    X(Date, tBirthday)                                                                                       \
    /* Insurance */                                                                                          \
    X(Text, cCityNo)                                                                                         \
    X(Text, cJukyuNo)                                                                                        \
    X(Text, cHokenKigouNo)                                                                                   \
    X(Text, cHokenKigouNo2)                                                                                  \
    X(Text, cHokenNo)                                                                                        \
    X(Text, cHokenNo2)                                                                                       \
    X(Text, cFutanNo)                                                                                        \
    X(Int, iHoken)                                                                                           \
    X(Text, cHokenJname)                                                                                     \
    X(Text, cHokenJname2)                                                                                    \
    X(Int, iSyogai)                                                                                          \
    X(Text, cSyogaiNo)                                                                                       \
    X(Text, cSyogaiJu)                                                                                       \
    X(Text, cSyogaiFname)                                                                                    \
    X(Int, iKaigoLevel)                                                                                      \
    X(Int, iFutanritsu)                                                                                      \
    X(Int, iJikofutanKubun)                                                                                  \
    X(Money, nJikofutanTanka)                                                                                \
    X(Text, cHokenJSubAddress)                                                                               \
    X(Text, cSyogaiFSubAddress)                                                                              \
    /* Address and contact */                                                                                \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAdress1)                                                                                        \
    X(Text, cAdress2)                                                                                        \
    X(Text, cAddressKana)                                                                                    \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Text, cMobNo)                                                                                          \
    /* Householder */                                                                                        \
    X(Text, cSetaiName)                                                                                      \
    X(Text, cSetaiKana)                                                                                      \
    X(Int, iSetaiSex)                                                                                        \
    X(Text, cSetaiYubinNo)                                                                                   \
    X(Text, cSetaiAdress1)                                                                                   \
    X(Text, cSetaiAdress2)                                                                                   \
    X(Text, cSetaiAddKana)                                                                                   \
    X(Text, cSetaiTelNo)                                                                                     \
    X(Text, cSetaiFaxNo)                                                                                     \
    X(Text, cSetaiMobNo)                                                                                     \
    X(Text, cSetaiTsuzuki)                                                                                   \
    X(Date, tSetaiBirthday)                                                                                  \
    /* Visit distance and map */                                                                             \
    X(Int, iTikuNo)                                                                                          \
    X(Int, nHokui)                                                                                           \
    X(Int, nToukei)                                                                                          \
    X(Int, iHoseUmu)                                                                                         \
    X(Int, nLenFix)                                                                                          \
    X(Int, nLenInp)                                                                                          \
    X(Int, nLenAdd)                                                                                          \
    X(Int, nHoseLen)                                                                                         \
    X(Int, iHoseCol)                                                                                         \
    X(Int, iHoseCut)                                                                                         \
    X(Int, iVisitFlg)                                                                                        \
    X(Int, iOuryoCalType)                                                                                    \
    X(Int, iOuryouKyoka)                                                                                     \
    /* Practitioners */                                                                                      \
    X(Int, nTantou)                                                                                          \
    X(Int, nTantou2)                                                                                         \
    X(Int, nTantou3)                                                                                         \
    X(Int, nTantou4)                                                                                         \
    X(Int, nTantou5)                                                                                         \
    /* Diagnosis and treatment */                                                                            \
    X(Text, cByoumei)                                                                                        \
    X(Int, iV)                                                                                               \
    X(Int, iSys)                                                                                             \
    X(Int, iSejutuBui1)                                                                                      \
    X(Int, iSejutuBui2)                                                                                      \
    X(Int, iSejutuBui3)                                                                                      \
    X(Int, iSejutuBui4)                                                                                      \
    X(Int, iSejutuBui5)                                                                                      \
    X(Int, iHenke)                                                                                           \
    X(Int, iOnan)                                                                                            \
    X(Int, iDenki)                                                                                           \
    X(Int, iSejutuBui11)                                                                                     \
    X(Int, iSejutuBui12)                                                                                     \
    X(Int, iSejutuBui13)                                                                                     \
    X(Int, iSejutuBui14)                                                                                     \
    X(Int, iSejutuBui15)                                                                                     \
    X(Int, iOnan1)                                                                                           \
    X(Int, iDenki1)                                                                                          \
    X(Date, tHenkeSday)                                                                                      \
    X(Date, tHenKeEday)                                                                                      \
    X(Date, tOnanSday)                                                                                       \
    X(Date, tOnanEday)                                                                                       \
    X(Date, tDenkiSday)                                                                                      \
    X(Date, tDenkiEday)                                                                                      \
    X(Int, iPtype)                                                                                           \
    X(Int, iGyoumuUmu)                                                                                       \
    X(Text, cGeninKeika)                                                                                     \
    X(Date, tHatsubyou)                                                                                      \
    X(Date, tSyoryoDay)                                                                                      \
    X(Date, tSyosinDay)                                                                                      \
    X(Date, tStartDay)                                                                                       \
    X(Date, tKHkigen)                                                                                        \
    X(Int, iSejutsuKubun)                                                                                    \
    /* Acupuncture and moxibustion */                                                                        \
    X(Int, nHKSyobyouCd)                                                                                     \
    X(Text, cHKSyobyouName)                                                                                  \
    X(Int, iHKSyokaiHiyo)                                                                                    \
    X(Int, iHKHariUmu)                                                                                       \
    X(Int, iHKKyuUmu)                                                                                        \
    X(Int, iHKDekiUmu)                                                                                       \
    X(Date, tHKHariSday)                                                                                     \
    X(Date, tHKHariEday)                                                                                     \
    X(Date, tHKKyuSday)                                                                                      \
    X(Date, tHKKyuEday)                                                                                      \
    X(Date, tHKDenkiSday)                                                                                    \
    X(Date, tHKDenkiEday)                                                                                    \
    X(Int, iHKHari1Umu)                                                                                      \
    X(Int, iHKKyu1Umu)                                                                                       \
    X(Int, iHKDeki1Umu)                                                                                      \
    X(Date, tHenkeSday2)                                                                                     \
    X(Date, tHenKeEday2)                                                                                     \
    X(Date, tOnanSday2)                                                                                      \
    X(Date, tOnanEday2)                                                                                      \
    X(Date, tDenkiSday2)                                                                                     \
    X(Date, tDenkiEday2)                                                                                     \
    X(Date, tHKHariSday2)                                                                                    \
    X(Date, tHKHariEday2)                                                                                    \
    X(Date, tHKKyuSday2)                                                                                     \
    X(Date, tHKKyuEday2)                                                                                     \
    X(Date, tHKDenkiSday2)                                                                                   \
    X(Date, tHKDenkiEday2)                                                                                   \
    /* Transfer of care */                                                                                   \
    X(Text, cHTno)                                                                                           \
    X(Date, tHTStartDay)                                                                                     \
    X(Text, cHTRiyuu)                                                                                        \
    X(Text, cHTIryoName)                                                                                     \
    X(Text, cHTIryoYubin)                                                                                    \
    X(Text, cHTIryoAdd)                                                                                      \
    /* Consent of the first and second doctor */                                                             \
    X(Text, cDouiIsiName1)                                                                                   \
    X(Text, cDouiIsiKikan1)                                                                                  \
    X(Text, cDouiIsiAdd1)                                                                                    \
    X(Text, cDouiByoumei1)                                                                                   \
    X(Date, tDouiDay1)                                                                                       \
    X(Date, tDouiKaryoS1)                                                                                    \
    X(Date, tDouiKaryoE1)                                                                                    \
    X(Text, cDouiIsiName2)                                                                                   \
    X(Text, cDouiIsiKikan2)                                                                                  \
    X(Text, cDouiIsiAdd2)                                                                                    \
    X(Text, cDouiByoumei2)                                                                                   \
    X(Date, tDouiDay2)                                                                                       \
    X(Date, tDouiKaryoS2)                                                                                    \
    X(Date, tDouiKaryoE2)                                                                                    \
    X(Date, tDouishoSaishutokuFrom)                                                                          \
    X(Date, tDouishoSaishutokuTo)                                                                            \
    /* Certificate and application */                                                                        \
    X(Text, cSyoumeiName)                                                                                    \
    X(Text, cSyoumeiYubin)                                                                                   \
    X(Text, cSyoumeiAdd)                                                                                     \
    X(Text, cSyoumeiTel)                                                                                     \
    X(Date, tSyoumeiDay)                                                                                     \
    X(Int, nDairiID)                                                                                         \
    X(Text, cSinseiName)                                                                                     \
    X(Text, cSinseiYubin)                                                                                    \
    X(Text, cSinseiAdd)                                                                                      \
    X(Text, cSinseiTel)                                                                                      \
    X(Date, tSinseiDay)                                                                                      \
    X(Text, cSinseiAtena)                                                                                    \
    /* Billing */                                                                                            \
    X(Int, iSeiKyuKubun)                                                                                     \
    X(Int, iTenki)                                                                                           \
    X(Text, cTekiyou)                                                                                        \
    X(Text, cBikou)                                                                                          \
    X(Int, iKinSyubetsu)                                                                                     \
    X(Text, cKinName)                                                                                        \
    X(Int, iKinSiten)                                                                                        \
    X(Text, cKinSiten)                                                                                       \
    X(Int, iKozaSyubetsu)                                                                                    \
    X(Text, cKozaNo)                                                                                         \
    X(Text, cKozaName)                                                                                       \
    X(Text, cKozaKana)                                                                                       \
    X(Int, iKozaKubun)                                                                                       \
    X(Text, cComment)                                                                                        \
    X(Text, cYotei)                                                                                          \
    X(Int, iPcnt)                                                                                            \
    /* Facility */                                                                                           \
    X(Int, nRoomNo)                                                                                          \
    X(Int, iRoomAnbunUmu)                                                                                    \
    /* Practitioners 6 to 10, read last */                                                                   \
    X(Int, nTantou6)                                                                                         \
    X(Int, nTantou7)                                                                                         \
    X(Int, nTantou8)                                                                                         \
    X(Int, nTantou9)                                                                                         \
    X(Int, nTantou10)

// Further stored columns of the patient record, after the loader's.
#define QELPRN_RIYOUSHA_EXTRA_COLUMNS(X)                                                                     \
    /* Patient number change */                                                                              \
    X(Int, nBeforeIDNo)                                                                                      \
    X(Int, nAfterIDNo)                                                                                       \
    X(Date, tIDKirikaeDate)                                                                                  \
    X(Text, cBikou02)                                                                                        \
    X(Int, iSejutuEnd)                                                                                       \
    X(Int, iHokouType)                                                                                       \
    X(Date, tExpireDay)                                                                                      \
    /* Care insurance */                                                                                     \
    X(Text, cKaigoHiHoNo)                                                                                    \
    X(Text, cKaigoHokensyaNo)                                                                                \
    X(Int, iKaigoYoukaigo)                                                                                   \
    X(Date, tKaigoNinteiSt)                                                                                  \
    X(Date, tKaigoNinteiEd)                                                                                  \
    X(Date, tKaigoServiceSt)                                                                                 \
    X(Date, tKaigoServiceEd)                                                                                 \
    /* Consent list */                                                                                       \
    X(Int, iDouiNo)                                                                                          \
    X(Date, tDouiYM)                                                                                         \
    X(Text, cDouiItiranBikou)                                                                                \
    /* Writer stamp */                                                                                       \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)
